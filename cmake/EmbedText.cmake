# Turns a UTF-8 text file into a C++ source with one function that returns its bytes. The literal is cut at line ends,
# because a compiler need not take one of any length.
file(READ ${INPUT} hex HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" lines "${hex}")
string(REPLACE "\\x0a" "\\x0a\"\n    \"" lines "${lines}")
file(WRITE ${OUTPUT}
"#include <string_view>\n\n"
"namespace warpline::embedded {\n\n"
"std::string_view Embedded_${NAME}();\n\n"
"std::string_view Embedded_${NAME}() {\n"
"  static constexpr char kText[] =\n    \"${lines}\";\n"
"  return {kText, sizeof(kText) - 1};\n"
"}\n\n"
"}  // namespace warpline::embedded\n")
