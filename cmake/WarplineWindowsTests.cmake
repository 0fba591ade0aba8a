# Tests for Windows run under Wine, a whole program a test: starting one takes longer there than most tests.

# The system's GoogleTest is for the system itself; its source is at hand beside it.
set(WARPLINE_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's source, built for Windows")
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${WARPLINE_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

set(WARPLINE_RUN_WITH_WINE ${CMAKE_SOURCE_DIR}/tests/windows/run-test-with-wine)

function(warpline_windows_test folder resources)
  warpline_windows_program(test_${folder} ${resources})
  add_test(NAME windows_${folder} COMMAND ${WARPLINE_RUN_WITH_WINE} $<TARGET_FILE:test_${folder}>)
  set_tests_properties(windows_${folder} PROPERTIES TIMEOUT 300)
endfunction()
