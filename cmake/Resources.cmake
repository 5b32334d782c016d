# Embeds the scripts and icons under the prefixes the code opens them by.
function(bq2_add_resources target)
    set(res ${PROJECT_SOURCE_DIR}/resources)
    file(GLOB files CONFIGURE_DEPENDS ${res}/bq2_scripts/*.mel ${res}/bq2_python/*.py ${res}/bq2_icons/*.png)
    if(files)
        qt_add_resources(${target} bq2_resources PREFIX "/" BASE ${res} FILES ${files})
    endif()
endfunction()
