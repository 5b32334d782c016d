# The Maya module: brindletEditor2.so under plug-ins/, found by Maya through the .mod file.
set_target_properties(brindletEditor2 PROPERTIES CXX_VISIBILITY_PRESET hidden)
configure_file(${PROJECT_SOURCE_DIR}/cmake/brindletEditor2.mod.in ${CMAKE_BINARY_DIR}/brindletEditor2.mod @ONLY)
install(TARGETS brindletEditor2 LIBRARY DESTINATION BrindletEditor2/plug-ins)
install(FILES ${CMAKE_BINARY_DIR}/brindletEditor2.mod DESTINATION .)
