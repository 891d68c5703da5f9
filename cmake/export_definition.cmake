# cmake -D NM=... -D OBJECTS=... -D NAMES=... -D RESULT=... -P export_definition.cmake
#
# Writes the module-definition file of a DLL. It has those symbols of the object files in OBJECTS
# whose demangled names are in NAMES. On Windows the linker can't match demangled names itself.
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
# A symbol may be in several object files; it is listed once. All symbols but functions are marked
# DATA.
list(REMOVE_DUPLICATES exports)
list(TRANSFORM exports REPLACE "<T>" "")
list(TRANSFORM exports REPLACE "<[A-Z]>" " DATA")
list(JOIN exports "\n  " exports)
file(WRITE ${RESULT} "EXPORTS\n  ${exports}\n")
