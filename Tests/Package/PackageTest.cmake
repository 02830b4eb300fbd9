# Installs the build into an empty folder, builds the example of the README against it as a stranger would, and compares
# what it prints with what the README says. Run by CTest with BUILD_DIR, SOURCE_DIR, WORK_DIR, TARGET, COMPILER and
# GENERATOR set.

cmake_minimum_required(VERSION 3.25)

function(run_or_fail what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed:\n${output}")
  endif()
  set(run_output "${output}" PARENT_SCOPE)
endfunction()

# The text between two marks behind a position; fails if there is none.
function(cut_block text begin end result)
  string(FIND "${text}" "${begin}" from)
  if(from EQUAL -1)
    message(FATAL_ERROR "the README has no block that begins with ${begin}")
  endif()
  string(LENGTH "${begin}" length)
  math(EXPR from "${from} + ${length}")
  string(SUBSTRING "${text}" ${from} -1 rest)
  string(FIND "${rest}" "${end}" to)
  string(SUBSTRING "${rest}" 0 ${to} block)
  set(${result} "${block}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/project")
run_or_fail("installing" "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/installed")

file(READ "${SOURCE_DIR}/README.md" readme)
string(REPLACE ";" "@semicolon@" readme "${readme}") # a list separator to CMake
cut_block("${readme}" "```cpp\n" "```" example)
cut_block("${readme}" "```text\n" "```" expected)
string(REPLACE "@semicolon@" ";" example "${example}")
file(WRITE "${WORK_DIR}/project/main.cpp" "${example}")
file(WRITE "${WORK_DIR}/project/CMakeLists.txt" "
cmake_minimum_required(VERSION 3.25)
project(stranger LANGUAGES CXX)
find_package(kzcBUIMngr REQUIRED)
add_executable(example main.cpp)
target_link_libraries(example PRIVATE ${TARGET})
")
run_or_fail("configuring" "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${WORK_DIR}/project" -B "${WORK_DIR}/build"
  -DCMAKE_PREFIX_PATH=${WORK_DIR}/installed -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}")
run_or_fail("building" "${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run_or_fail("running" "${WORK_DIR}/build/example")
if(NOT run_output STREQUAL expected)
  message(FATAL_ERROR "the example prints\n${run_output}\nand the README says\n${expected}")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
