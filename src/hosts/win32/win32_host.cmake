# The Win32 desktop host and quiller.exe (Windows builds only): one static GUI-subsystem program
# with its icon, version and manifest (common controls 6, per-monitor DPI awareness).
quiller_layer(quiller_win32_host hosts/win32)
target_link_libraries(quiller_win32_host PUBLIC quiller_host_common quiller_ui quiller_os comctl32
                                                comdlg32 user32 gdi32 shell32 advapi32)

set(QUILLER_RESOURCES ${CMAKE_CURRENT_SOURCE_DIR}/hosts/win32/resources)
configure_file(${QUILLER_RESOURCES}/quiller.rc.in ${CMAKE_CURRENT_BINARY_DIR}/quiller.rc @ONLY)
add_executable(quiller WIN32 main/quiller_win32_main.cpp main/command_line.cpp
                             ${CMAKE_CURRENT_BINARY_DIR}/quiller.rc)
target_link_options(quiller PRIVATE -municode)
target_link_libraries(quiller PRIVATE quiller_core quiller_win32_host)
set_property(SOURCE ${CMAKE_CURRENT_BINARY_DIR}/quiller.rc APPEND PROPERTY OBJECT_DEPENDS
             ${QUILLER_RESOURCES}/quiller.ico ${QUILLER_RESOURCES}/quiller.manifest)
