# What a program or library for Windows carries beside its code: version, icon, manifest, and a library search in the system's
# folder alone.

enable_language(RC)

# The maker's line of the about box, its first, so that the file's properties say the same.
file(STRINGS ${CMAKE_SOURCE_DIR}/resources/catalogue_en.txt warpline_maker REGEX "^62: " ENCODING UTF-8)
string(REGEX REPLACE "^62: |[\\]n.*$" "" warpline_maker "${warpline_maker}")
string(REGEX REPLACE "^Developed by the " "" warpline_company "${warpline_maker}")

# The line that every package takes its terms from.
file(STRINGS ${CMAKE_SOURCE_DIR}/packaging/licence.txt warpline_licence LIMIT_COUNT 1 ENCODING UTF-8)

function(warpline_version_resource target description)
  get_target_property(kind ${target} TYPE)
  if(kind STREQUAL "EXECUTABLE")
    set(warpline_file_type VFT_APP)
    set(warpline_suffix .exe)
  else()
    set(warpline_file_type VFT_DLL)
    set(warpline_suffix .dll)
  endif()
  set(warpline_description "${description}")
  set(resource ${CMAKE_BINARY_DIR}/resources/${target}_version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/resources/windows/version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()

# For programs, those of the tests too; resources is program for one without windows, windowed_program for one with.
function(warpline_windows_program target resources)
  set(folder ${CMAKE_SOURCE_DIR}/resources/windows)
  target_sources(${target} PRIVATE ${folder}/${resources}.rc ${folder}/library_search.cpp)
  set_property(SOURCE ${folder}/${resources}.rc TARGET_DIRECTORY ${target} APPEND PROPERTY OBJECT_DEPENDS
    "${folder}/program.rc;${folder}/warpline.ico;${folder}/warpline.manifest")
endfunction()

warpline_version_resource(warpline "Warpline Tool on the command line")
warpline_version_resource(warpline-projector "Simulated projector for Warpline Tool")
warpline_version_resource(Beamlink "Stand-in for the projector's control library")
warpline_version_resource(Beamseek2 "Stand-in for the projector's search library")
warpline_windows_program(warpline program)
if(TARGET WarplineTool)
  warpline_version_resource(WarplineTool "Warpline Tool")
  warpline_windows_program(WarplineTool windowed_program)
  warpline_windows_program(warpline-projector windowed_program)
  # What scripts/bench-windows compares the tool's start with.
  add_executable(warpline_empty_frame WIN32 EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/bench/ui_empty_frame_main.cpp)
  target_link_libraries(warpline_empty_frame PRIVATE warpline_options warpline_wx)
  warpline_windows_program(warpline_empty_frame windowed_program)
else()
  warpline_windows_program(warpline-projector program)
endif()

# The libraries that a program names are looked for beside it first, before any of its code can forbid that, but for those
# that the system always takes from itself. So these others are loaded later, with their first call.
set(warpline_delayed_folder ${CMAKE_BINARY_DIR}/delayed)
set(warpline_delayed "")
file(MAKE_DIRECTORY ${warpline_delayed_folder})
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(warpline_symbol_prefix _)
endif()
foreach(name iphlpapi msimg32 oleacc uxtheme version winmm winspool)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${name}.a
    OUTPUT_VARIABLE imports OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(delayed ${warpline_delayed_folder}/lib${name}.a)
  add_custom_command(OUTPUT ${delayed}
    COMMAND ${CMAKE_COMMAND} -DNM=${CMAKE_NM} -DDLLTOOL=${CMAKE_DLLTOOL} -DPREFIX=${warpline_symbol_prefix}
            -DIMPORTS=${imports} -DOUTPUT=${delayed} -P ${CMAKE_SOURCE_DIR}/cmake/DelayedLibrary.cmake
    DEPENDS ${imports} ${CMAKE_SOURCE_DIR}/cmake/DelayedLibrary.cmake
    VERBATIM)
  list(APPEND warpline_delayed ${delayed})
endforeach()
add_custom_target(warpline_delayed_libraries DEPENDS ${warpline_delayed})
# The linker looks there before it looks among the compiler's own.
target_link_directories(warpline_options INTERFACE ${warpline_delayed_folder})
set_property(TARGET warpline_options APPEND PROPERTY INTERFACE_LINK_DEPENDS ${warpline_delayed})
