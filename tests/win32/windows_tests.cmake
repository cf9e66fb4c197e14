# Windows-only tests. When cross-compiling, every program runs under the emulator (Wine).
#
# - quiller_launch: starts a program with a given temporary folder (TMP and TEMP), which is how
#   the script tests name the folder of the error log.
# - quiller_differential: the value layer and the formatter against the system's own conversions
#   (oleaut32), the INI profile code against the profile-string functions.
# - In a cross build the script tests run quillerc.exe through quillerc-wine.sh, which gives the
#   script runner the same contract as the POSIX quillerc (see that file). `script_quillerc`
#   names what the script tests run.

add_executable(quiller_launch ${CMAKE_CURRENT_LIST_DIR}/launch_main.cpp)

add_executable(quiller_differential
  ${CMAKE_CURRENT_LIST_DIR}/differential_main.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_inputs.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_system.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_report.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_format.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_format_rules.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_format_date_rules.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_ini.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_ini_rules.cpp)
target_link_libraries(quiller_differential PRIVATE quiller_core oleaut32)
add_test(NAME win32.differential
  COMMAND quiller_differential ${CMAKE_CURRENT_LIST_DIR}/known_differences.txt
          ${CMAKE_CURRENT_LIST_DIR}/inputs.txt
          ${CMAKE_SOURCE_DIR}/tests/reference)

if(CMAKE_CROSSCOMPILING)
  set(emulator_words "")
  foreach(word IN LISTS CMAKE_CROSSCOMPILING_EMULATOR)
    string(APPEND emulator_words " \"${word}\"")
  endforeach()
  set(LAUNCHER "$<TARGET_FILE:quiller_launch>")
  set(QUILLERC "$<TARGET_FILE:quillerc>")
  configure_file(${CMAKE_CURRENT_LIST_DIR}/quillerc-wine.sh.in
                 ${CMAKE_CURRENT_BINARY_DIR}/quillerc-wine.sh.in @ONLY)
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/quillerc-wine.sh
       INPUT ${CMAKE_CURRENT_BINARY_DIR}/quillerc-wine.sh.in
       FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                        WORLD_READ WORLD_EXECUTE)
  set(script_quillerc ${CMAKE_CURRENT_BINARY_DIR}/quillerc-wine.sh)
endif()
