# The shared engine exports its public classes and nothing else of its own. Run by CTest with LIBRARY and NM set.

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND "${NM}" -D --defined-only -C "${LIBRARY}" RESULT_VARIABLE result OUTPUT_VARIABLE symbols)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "the symbols of ${LIBRARY} cannot be listed")
endif()
set(allowed CBtnWorthList CBUIDataMngr VCBtnClass IBtnCnd CBasicBtnCnd CContainerOfBscBtnCnd CUnitCndOfBscBtnCnd
  IComponentOfBscBtnCnd INumCnd ISumValueMngr CSumValueCache CSumValueCacheMngr SCBUICoreCom
  SCBUICoreStrDef ECAbnormalData ECInaccurateCode)
string(REGEX MATCHALL "[TBDRVW] [^\n]*NSKZ::NSKZCore::[A-Za-z_0-9]+" lines "${symbols}")
set(found "")
foreach(line IN LISTS lines)
  # Templates of the standard library over the project's types are not the project's.
  if(line MATCHES "^[TBDRVW] ((vtable|typeinfo|typeinfo name|VTT) for )?NSKZ::NSKZCore::([A-Za-z_0-9]+)$")
    list(APPEND found "${CMAKE_MATCH_3}")
    if(NOT CMAKE_MATCH_3 IN_LIST allowed)
      message(SEND_ERROR "${CMAKE_MATCH_3} is exported")
    endif()
  endif()
endforeach()
foreach(name IN LISTS allowed)
  if(NOT name IN_LIST found)
    message(SEND_ERROR "${name} is not exported")
  endif()
endforeach()
