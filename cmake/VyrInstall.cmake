# Install rules: the library, its public headers, a CMake package (find_package(VyrBase CONFIG))
# and a pkg-config file (pkg-config vyrbase). Both carry the toolkit's usage requirements, since
# the public headers include wxWidgets headers.
include(CMakePackageConfigHelpers)

install(TARGETS vyrbase EXPORT VyrBaseTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vyrbase DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# The MIT licence travels with every install.
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vyrbase)

set(VYR_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VyrBase)
install(EXPORT VyrBaseTargets NAMESPACE VyrBase:: DESTINATION ${VYR_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/VyrBaseConfig.cmake.in
    ${PROJECT_BINARY_DIR}/VyrBaseConfig.cmake INSTALL_DESTINATION ${VYR_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VyrBaseConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VyrBaseConfig.cmake ${PROJECT_BINARY_DIR}/VyrBaseConfigVersion.cmake
    DESTINATION ${VYR_CMAKE_DIR})

# pkg-config: the toolkit ships no .pc file on Debian, so its flags are written in as wx-config
# reported them when this tree was configured.
set(VYR_PC_CFLAGS "")
foreach(dir IN LISTS wxWidgets_INCLUDE_DIRS)
    string(APPEND VYR_PC_CFLAGS " -isystem ${dir}")
endforeach()
foreach(def IN LISTS wxWidgets_DEFINITIONS)
    string(APPEND VYR_PC_CFLAGS " -D${def}")
endforeach()
foreach(flag IN LISTS wxWidgets_CXX_FLAGS)
    string(APPEND VYR_PC_CFLAGS " ${flag}")
endforeach()
set(VYR_PC_LIBS "")
foreach(lib IN LISTS wxWidgets_LIBRARIES)
    if(lib STREQUAL "")
        continue()
    elseif(lib MATCHES "^-")
        string(APPEND VYR_PC_LIBS " ${lib}")
    elseif(IS_ABSOLUTE "${lib}")
        string(APPEND VYR_PC_LIBS " ${lib}")
    else()
        string(APPEND VYR_PC_LIBS " -l${lib}")
    endif()
endforeach()
# The prefix is found from the .pc file's own place, so that an install moved or made with
# `cmake --install --prefix` still points at itself.
file(RELATIVE_PATH VYR_PC_RELATIVE_PREFIX /root/${CMAKE_INSTALL_LIBDIR}/pkgconfig /root)
string(REGEX REPLACE "/$" "" VYR_PC_RELATIVE_PREFIX "${VYR_PC_RELATIVE_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/vyrbase.pc.in ${PROJECT_BINARY_DIR}/vyrbase.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vyrbase.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
