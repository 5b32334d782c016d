# The plug-in as Maya loads it: the whole product library in one shared object, so that every static
# initialiser and both entry points are in it, in the library's own order. What the host provides is
# left undefined, for the program that loads the plug-in.
function(bq2_add_plugin target)
    set(source ${CMAKE_BINARY_DIR}/bq2_plugin_library.cpp)
    file(WRITE ${source} "// The plug-in is the product library, whole.\n")
    add_library(${target} SHARED ${source})
    target_link_libraries(${target} PRIVATE -Wl,--whole-archive $<TARGET_FILE:bq2_product> -Wl,--no-whole-archive
                          Qt6::Core Qt6::Gui Qt6::Widgets ${ARGN})
    add_dependencies(${target} bq2_product)
    set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME brindletEditor2)
endfunction()
