# cmake -D NM=... -D OBJECTS=... -D NAMES=... -D RESULT=... -P export_definition.cmake
#
# Writes the definition file of a DLL: of all symbols in the object files, which OBJECTS lists, those
# that NAMES gives in their readable form. The linker has no patterns for such names on Windows.
cmake_minimum_required(VERSION 3.25)
file(STRINGS ${NAMES} exported REGEX "^[^#]")
foreach(form "no-demangle" "demangle")
  execute_process(COMMAND ${NM} --${form} --extern-only --defined-only --format=posix @${OBJECTS}
                  OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\n" ";" ${form} "${table}")
endforeach()

set(exports "")
foreach(symbol readable IN ZIP_LISTS no-demangle demangle)
  string(REGEX REPLACE " [A-Z] [0-9a-f ]+$" "" readable "${readable}")
  if(readable IN_LIST exported AND symbol MATCHES "^([^ ]+) ([A-Z]) ")
    list(APPEND exports "${CMAKE_MATCH_1}<${CMAKE_MATCH_2}>")
  endif()
endforeach()
# What stands in several object files is one symbol. All but functions are marked as data.
list(REMOVE_DUPLICATES exports)
list(TRANSFORM exports REPLACE "<T>" "")
list(TRANSFORM exports REPLACE "<[A-Z]>" " DATA")
list(JOIN exports "\n  " exports)
file(WRITE ${RESULT} "EXPORTS\n  ${exports}\n")
