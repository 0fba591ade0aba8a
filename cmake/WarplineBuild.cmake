# What every target of the tree shares: language level, warnings, platform twins, output folder.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The tool looks for the control library beside its own executable, so all programs and libraries land in one folder.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

if(CMAKE_CROSSCOMPILING)
  set(WARPLINE_NATIVE OFF)
else()
  set(WARPLINE_NATIVE ON)
endif()

if(WIN32)
  set(WARPLINE_TWIN win)
  set(WARPLINE_OTHER_TWIN posix)
else()
  set(WARPLINE_TWIN posix)
  set(WARPLINE_OTHER_TWIN win)
endif()

find_program(WARPLINE_CCACHE ccache)
if(WARPLINE_CCACHE)
  # Paths below the tree count as relative, so that one clone's cache serves the next; the preprocessor's text is what they are
  # compared by, for joined sources name each other by their full paths.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${WARPLINE_CCACHE})
endif()

find_package(Threads REQUIRED)

add_library(warpline_options INTERFACE)
target_include_directories(warpline_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(warpline_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -ffp-contract=off)
target_compile_definitions(warpline_options INTERFACE
  WARPLINE_PLATFORM_HEADER="platform/library_call_${WARPLINE_TWIN}.h")
target_link_libraries(warpline_options INTERFACE Threads::Threads)
set(WARPLINE_SANITIZE "" CACHE STRING "The sanitizers to build with, as -fsanitize takes them")
if(NOT WIN32 AND NOT WARPLINE_SANITIZE)
  # As the distribution's own programs are built; what checks the calls of the C library wants an optimizing compiler.
  target_compile_options(warpline_options INTERFACE -fstack-protector-strong)
  target_compile_definitions(warpline_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
  target_link_options(warpline_options INTERFACE -Wl,-z,relro,-z,now)
endif()
if(WIN32)
  target_compile_definitions(warpline_options INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00)
  # What is not used is left out; the same sources give the same bytes wherever they lie.
  target_compile_options(warpline_options INTERFACE
    -ffunction-sections -fdata-sections -fstack-protector-strong
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}/= -ffile-prefix-map=${CMAKE_BINARY_DIR}/=)
  target_compile_definitions(warpline_options INTERFACE _FORTIFY_SOURCE=2)
  target_link_options(warpline_options INTERFACE -static -fstack-protector-strong
    -Wl,--gc-sections -Wl,--no-insert-timestamp -Wl,--dynamicbase -Wl,--nxcompat $<$<NOT:$<CONFIG:Debug>>:-s>)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(warpline_options INTERFACE -Wl,--high-entropy-va)
  else()
    # The arithmetic of 64 bit, with the same rounding in every step; each system that we run on has it.
    target_compile_options(warpline_options INTERFACE -msse2 -mfpmath=sse)
  endif()
endif()

if(WARPLINE_SANITIZE)
  target_compile_options(warpline_options INTERFACE
    -fsanitize=${WARPLINE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(warpline_options INTERFACE -fsanitize=${WARPLINE_SANITIZE})
endif()
if(WARPLINE_NATIVE AND NOT CMAKE_BUILD_TYPE STREQUAL Release)
  find_program(WARPLINE_QUICK_LINKER ld.lld)
  if(WARPLINE_QUICK_LINKER)  # in a third of the time; what is shipped is linked by the system's own
    target_link_options(warpline_options INTERFACE -fuse-ld=lld)
  endif()
endif()

# Takes the other system's twins out of a list of sources.
function(warpline_without_other_twin list)
  set(sources ${${list}})
  list(FILTER sources EXCLUDE REGEX "_${WARPLINE_OTHER_TWIN}(_test)?\\.cpp$")
  set(${list} ${sources} PARENT_SCOPE)
endfunction()

# All sources of the current folder but the other system's twins and those of a program's own main.
function(warpline_sources out)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  warpline_without_other_twin(sources)
  list(FILTER sources EXCLUDE REGEX "_main\\.cpp$")
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

# What the tests wait for under AddressSanitizer: the rest runs less than its optimizing takes.
set(WARPLINE_CALCULATING core model picture fit)

# One static library a folder: warpline_library(model core) makes warpline_model, which sees warpline_core.
function(warpline_library folder)
  warpline_sources(sources)
  add_library(warpline_${folder} STATIC ${sources})
  target_link_libraries(warpline_${folder} PUBLIC warpline_options)
  foreach(needed IN LISTS ARGN)
    target_link_libraries(warpline_${folder} PUBLIC warpline_${needed})
  endforeach()
  if(WARPLINE_SANITIZE MATCHES address AND folder IN_LIST WARPLINE_CALCULATING)
    target_compile_options(warpline_${folder} PRIVATE -O2)
  endif()
endfunction()

# A header-only library of the development machine. A cross build sees its headers alone, copied beside the build, never
# the whole of the system's include folder.
function(warpline_header_only target)
  add_library(${target} INTERFACE)
  if(CMAKE_CROSSCOMPILING)
    set(place ${CMAKE_BINARY_DIR}/header_only/${target})
    foreach(header IN LISTS ARGN)
      file(COPY /usr/include/${header} DESTINATION ${place})
    endforeach()
    target_include_directories(${target} SYSTEM INTERFACE ${place})
  endif()
endfunction()
warpline_header_only(warpline_cli11 CLI)
warpline_header_only(warpline_json nlohmann)
warpline_header_only(warpline_stb stb)
warpline_header_only(warpline_eigen eigen3/Eigen)
# It lies in a folder of its own. What of it is under the LGPL stays out.
if(NOT CMAKE_CROSSCOMPILING)
  target_include_directories(warpline_eigen SYSTEM INTERFACE /usr/include/eigen3)
endif()
# The same sums in the same order on every system, and less code.
target_compile_definitions(warpline_eigen INTERFACE EIGEN_MPL2_ONLY EIGEN_DONT_VECTORIZE)

include(EmbedText)
