# Builds against a Maya 2026 devkit: Maya's API headers and libraries, and Maya's own Qt.
set(MAYA_LOCATION "$ENV{MAYA_LOCATION}" CACHE PATH "Maya 2026 installation (for its libraries and Qt)")

find_path(MAYA_INCLUDE_DIR maya/MFnPlugin.h PATHS ${MAYA_DEVKIT}/include ${MAYA_LOCATION}/include
          NO_DEFAULT_PATH REQUIRED)
set(maya_library_dirs ${MAYA_DEVKIT}/lib ${MAYA_LOCATION}/lib)
set(maya_libraries)
foreach(name OpenMaya OpenMayaUI Foundation)
    find_library(MAYA_${name}_LIBRARY ${name} PATHS ${maya_library_dirs} NO_DEFAULT_PATH REQUIRED)
    list(APPEND maya_libraries ${MAYA_${name}_LIBRARY})
endforeach()

add_library(maya::api INTERFACE IMPORTED)
target_include_directories(maya::api INTERFACE ${MAYA_INCLUDE_DIR})
target_link_libraries(maya::api INTERFACE ${maya_libraries})
target_compile_definitions(maya::api INTERFACE LINUX _BOOL REQUIRE_IOSTREAM)

# Maya ships the Qt it was built with; the plug-in must use exactly that one.
list(PREPEND CMAKE_PREFIX_PATH ${MAYA_DEVKIT}/cmake ${MAYA_LOCATION}/lib/cmake ${MAYA_DEVKIT}/lib/cmake)
set(BQ2_MAYA_QT_VERSION 6.5 CACHE STRING "The Qt version Maya ships (Maya 2026: 6.5)")
find_package(Qt6 ${BQ2_MAYA_QT_VERSION} REQUIRED COMPONENTS Core Gui Widgets)
