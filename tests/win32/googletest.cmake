# GoogleTest for a cross build: built from Debian's sources (package googletest) with the cross
# compiler, since the installed libraries are for the build machine.
set(QUILLER_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest sources for cross builds")
if(NOT EXISTS ${QUILLER_GOOGLETEST_SOURCE}/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest sources not found in ${QUILLER_GOOGLETEST_SOURCE} "
                      "(install the googletest package or set QUILLER_GOOGLETEST_SOURCE)")
endif()
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${QUILLER_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(lib gtest gtest_main)
  if(NOT TARGET GTest::${lib})
    add_library(GTest::${lib} ALIAS ${lib})
  endif()
endforeach()
