# Script mode: writes OUTPUT, a C++ source holding every .py file under PYTHON_DIR as bytes,
# with its module name, for HostPythonSources.
file(GLOB_RECURSE files RELATIVE ${PYTHON_DIR} ${PYTHON_DIR}/*.py)
list(SORT files)

set(arrays "")
set(entries "")
set(index 0)
foreach(file IN LISTS files)
    string(REGEX REPLACE "\\.py$" "" module ${file})
    string(REPLACE "/" "." module ${module})
    set(package false)
    if(module MATCHES "(^|\\.)__init__$")
        set(package true)
        string(REGEX REPLACE "\\.?__init__$" "" module ${module})
    endif()
    file(READ ${PYTHON_DIR}/${file} hex HEX)
    string(LENGTH "${hex}" hex_length)
    math(EXPR size "${hex_length} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
    # One line of bytes per line of source.
    string(REPLACE "0x0a," "0x0a,\n    " bytes "${bytes}")
    # A terminating zero keeps even an empty file a valid array.
    string(APPEND arrays "const unsigned char source${index}[] = {\n    ${bytes}0x00};\n\n")
    string(APPEND entries "    {\"${module}\", \"<embedded>/${file}\", ${package}, source${index}, ${size}},\n")
    math(EXPR index "${index} + 1")
endforeach()

set(content "// Generated from host/python by GeneratePythonSources.cmake: do not edit.
#include \"HostPythonSources.h\"

namespace
{
${arrays}const HostPythonSource table[] = {
${entries}};
} // namespace

const HostPythonSource* HostPythonSources::Table(std::size_t& count)
{
    count = sizeof(table) / sizeof(table[0]);
    return table;
}
")
file(WRITE ${OUTPUT}.tmp "${content}")
file(COPY_FILE ${OUTPUT}.tmp ${OUTPUT} ONLY_IF_DIFFERENT)
file(REMOVE ${OUTPUT}.tmp)
