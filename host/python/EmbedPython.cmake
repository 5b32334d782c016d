# Compiles the Python sources under host/python into the host library, so that the embedded
# interpreter imports them from memory and nothing is written to disk.
function(bq2_embed_python_sources target)
    set(python_dir ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
    file(GLOB_RECURSE python_files CONFIGURE_DEPENDS ${python_dir}/*.py)
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/HostPythonSourcesData.cpp)
    add_custom_command(
        OUTPUT ${generated}
        COMMAND ${CMAKE_COMMAND} -DPYTHON_DIR=${python_dir} -DOUTPUT=${generated}
                -P ${python_dir}/GeneratePythonSources.cmake
        DEPENDS ${python_files} ${python_dir}/GeneratePythonSources.cmake
        COMMENT "Embedding the host's Python sources"
        VERBATIM)
    target_sources(${target} PRIVATE ${generated})
endfunction()
