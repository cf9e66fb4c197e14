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
  ${CMAKE_CURRENT_LIST_DIR}/differential_format_date_rules.cpp
  ${CMAKE_CURRENT_LIST_DIR}/differential_ini.cpp)
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

# The desktop host's windows, driven from a second thread of the test program, under Wine in a
# virtual desktop inside Xvfb; screenshots go to gui-shots/ in the build folder.
add_executable(quiller_gui_tests
  ${CMAKE_CURRENT_LIST_DIR}/gui/gui_tests.cpp
  ${CMAKE_CURRENT_LIST_DIR}/gui/gui_session.cpp
  ${CMAKE_CURRENT_LIST_DIR}/gui/gui_driver.cpp
  ${CMAKE_BINARY_DIR}/src/quiller.rc)  # quiller.exe's icon and manifest (common controls 6)
target_include_directories(quiller_gui_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/gui)
target_link_libraries(quiller_gui_tests PRIVATE quiller_core quiller_win32_host GTest::gtest
                                                GTest::gtest_main)
target_link_options(quiller_gui_tests PRIVATE -mwindows)
if(CMAKE_CROSSCOMPILING)
  add_test(NAME win32.gui
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/gui/run_gui_tests.sh ${CMAKE_BINARY_DIR}/wineprefix-gui
            ${CMAKE_BINARY_DIR}/gui-shots $<TARGET_FILE:quiller_gui_tests>)
  set_tests_properties(win32.gui PROPERTIES TIMEOUT 300 RUN_SERIAL TRUE)
endif()
