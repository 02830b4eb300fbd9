# What every target of the project is compiled with, and how a library of it is made.

add_library(kzc_compile_options INTERFACE)
# -Wrestrict is left out: g++ 12 reports it where std::string is only concatenated.
target_compile_options(kzc_compile_options INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wconversion -Wshadow>
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<BOOL:${KZC_WARNINGS_AS_ERRORS}>>:-Werror>)
if(KZC_SANITIZE)
  target_compile_options(kzc_compile_options INTERFACE
    -fsanitize=${KZC_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kzc_compile_options INTERFACE -fsanitize=${KZC_SANITIZE})
  target_compile_definitions(kzc_compile_options INTERFACE KZC_SANITIZED)
endif()
if(KZC_FUZZ)
  target_compile_options(kzc_compile_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# kzc_add_library(NAME DIR API DEPS...)
#
# Compiles every source in DIR/Src once and makes of it the static library kzc::NAME and, with
# KZC_BUILD_SHARED, the shared library kzc::NAME_shared. Only what is marked with the macro API in its
# header is visible outside the shared one. DEPS are further libraries of this project by their NAME;
# each has its own include directory, so that an include against the direction of the calls fails.
function(kzc_add_library NAME DIR API)
  file(GLOB sources CONFIGURE_DEPENDS "${DIR}/Src/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${DIR}/Src/*.h")
  set(objects "kzc${NAME}_objects")
  add_library(${objects} OBJECT ${sources} ${headers})
  set_target_properties(${objects} PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_definitions(${objects} PRIVATE ${API}_BUILDING)
  target_include_directories(${objects} PUBLIC "${DIR}/Src")
  target_link_libraries(${objects} PRIVATE kzc_compile_options)
  foreach(dep IN LISTS ARGN)
    target_include_directories(${objects} PUBLIC $<TARGET_PROPERTY:kzc${dep},INTERFACE_INCLUDE_DIRECTORIES>)
  endforeach()

  set(flavours "")
  add_library(kzc${NAME} STATIC $<TARGET_OBJECTS:${objects}>)
  list(APPEND flavours kzc${NAME})
  if(KZC_BUILD_SHARED)
    add_library(kzc${NAME}_shared SHARED $<TARGET_OBJECTS:${objects}>)
    set_target_properties(kzc${NAME}_shared PROPERTIES
      OUTPUT_NAME kzc${NAME} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
      INSTALL_RPATH "$ORIGIN") # the libraries find each other beside themselves
    list(APPEND flavours kzc${NAME}_shared)
  endif()
  foreach(flavour IN LISTS flavours)
    string(REGEX MATCH "_shared$" suffix "${flavour}")
    add_library(kzc::${NAME}${suffix} ALIAS ${flavour})
    set_target_properties(${flavour} PROPERTIES LINKER_LANGUAGE CXX EXPORT_NAME ${NAME}${suffix})
    target_compile_features(${flavour} PUBLIC cxx_std_20)
    target_include_directories(${flavour} PUBLIC
      "$<BUILD_INTERFACE:${DIR}/Src>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kzc/${NAME}>")
    target_link_libraries(${flavour} PRIVATE $<BUILD_INTERFACE:kzc_compile_options>)
    foreach(dep IN LISTS ARGN)
      target_link_libraries(${flavour} PUBLIC kzc::${dep}${suffix})
    endforeach()
    set_property(GLOBAL APPEND PROPERTY KZC_INSTALLED_TARGETS ${flavour})
  endforeach()
  install(FILES ${headers} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/kzc/${NAME}")
endfunction()

# kzc_link_outer_library(NAME LIBRARY): gives both flavours of kzc::NAME a library that is not of this project.
# Its headers stay inside: what uses kzc::NAME links it without seeing them.
function(kzc_link_outer_library NAME LIBRARY)
  target_link_libraries(kzc${NAME}_objects PRIVATE ${LIBRARY})
  target_link_libraries(kzc${NAME} PRIVATE ${LIBRARY})
  if(TARGET kzc${NAME}_shared)
    target_link_libraries(kzc${NAME}_shared PRIVATE ${LIBRARY})
  endif()
endfunction()
