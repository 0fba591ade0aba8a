# Embeds text files in UTF-8: each becomes a function "std::string_view Embedded_<name>()" in namespace warpline::embedded.
# The sources are written while CMake configures, for a process for each of a hundred small files would take longer than
# compiling them; a text that changes configures anew.
function(warpline_embed_texts target)
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME_WE)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(READ ${file} hex HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" lines "${hex}")
    # The literal is cut at line ends, because a compiler need not take one of any length.
    string(REPLACE "\\x0a" "\\x0a\"\n    \"" lines "${lines}")
    set(source ${CMAKE_CURRENT_BINARY_DIR}/embedded_${name}.cpp)
    file(CONFIGURE OUTPUT ${source} @ONLY CONTENT [[
#include <string_view>

namespace warpline::embedded {

std::string_view Embedded_@name@();

std::string_view Embedded_@name@() {
  static constexpr char kText[] =
    "@lines@";
  return {kText, sizeof(kText) - 1};
}

}  // namespace warpline::embedded
]])
    target_sources(${target} PRIVATE ${source})
  endforeach()
endfunction()
