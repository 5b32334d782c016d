# Embeds the scripts and icons under the prefixes the code opens them by.
function(bq2_add_resources target)
    set(res ${PROJECT_SOURCE_DIR}/resources)
    file(GLOB scripts CONFIGURE_DEPENDS RELATIVE ${res} ${res}/bq2_scripts/*.mel)
    file(GLOB python CONFIGURE_DEPENDS RELATIVE ${res} ${res}/bq2_python/*.py)
    file(GLOB icons CONFIGURE_DEPENDS RELATIVE ${res} ${res}/bq2_icons/*.png)
    set(all ${scripts} ${python} ${icons})
    if(all)
        qt_add_resources(${target} bq2_resources PREFIX "/" BASE ${res}
                         FILES ${scripts} ${python} ${icons}
                         OUTPUT_TARGETS bq2_resource_targets)
        set(BQ2_RESOURCE_TARGETS ${bq2_resource_targets} PARENT_SCOPE)
    endif()
endfunction()
