# wxWidgets as one target, warpline_wx, where it is found: the system's on Linux, the static one of
# scripts/wxwidgets-windows (its folder is given as wxWidgets_DIR) in a cross build. Without it the windows are left out and
# the rest of the tree stands on its own.
if(CMAKE_CROSSCOMPILING)
  find_package(wxWidgets 3.2 CONFIG QUIET)
  if(wxWidgets_FOUND)
    add_library(warpline_wx INTERFACE)
    target_link_libraries(warpline_wx INTERFACE wx::core wx::base)
    # The assertions in its headers name them: by their place below the toolkit, wherever that lies.
    get_filename_component(toolkit ${wxWidgets_DIR}/../../.. ABSOLUTE)
    target_compile_options(warpline_wx INTERFACE -ffile-prefix-map=${toolkit}/=wxwidgets/)
  endif()
else()
  find_package(wxWidgets 3.2 COMPONENTS core base QUIET)
  if(wxWidgets_FOUND)
    add_library(warpline_wx INTERFACE)
    target_include_directories(warpline_wx SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
    target_compile_definitions(warpline_wx INTERFACE ${wxWidgets_DEFINITIONS}
      $<$<CONFIG:Debug>:${wxWidgets_DEFINITIONS_DEBUG}>)
    target_compile_options(warpline_wx INTERFACE ${wxWidgets_CXX_FLAGS})
    target_link_directories(warpline_wx INTERFACE ${wxWidgets_LIBRARY_DIRS})
    target_link_libraries(warpline_wx INTERFACE ${wxWidgets_LIBRARIES})
  endif()
endif()
if(NOT TARGET warpline_wx)
  message(STATUS "wxWidgets 3.2 not found: the windows are not built")
endif()
