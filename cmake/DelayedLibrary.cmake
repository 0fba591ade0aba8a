# Makes OUTPUT, an import library with the functions of the import library IMPORTS whose DLL is loaded with the first call of
# one of them, not when the program starts. PREFIX is what the system puts before the names of C functions.
function(warpline_result_of out)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

warpline_result_of(library ${DLLTOOL} --identify ${IMPORTS})
warpline_result_of(symbols ${NM} --defined-only ${IMPORTS})
string(REGEX MATCHALL " T ${PREFIX}[^\n]+" functions "${symbols}")
list(TRANSFORM functions REPLACE "^ T ${PREFIX}" "")
list(JOIN functions "\n" lines)
file(WRITE ${OUTPUT}.def "EXPORTS\n${lines}\n")
# Symbols of 32 bit end in "@" and the size of the parameters; the DLL's own names do not.
warpline_result_of(nothing ${DLLTOOL} --kill-at --input-def ${OUTPUT}.def --dllname ${library} --output-delaylib ${OUTPUT})
