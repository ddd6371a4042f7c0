# Library, public header, CMake package and pkg-config file.
include(CMakePackageConfigHelpers)

set(ZUCMTR_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZuCmtrConverter)

install(TARGETS ZuCmtrConverter EXPORT ZuCmtrConverterTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
        NAMELINK_COMPONENT development)
install(FILES service/zucmtrlib.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT ZuCmtrConverterTargets NAMESPACE ZuCmtrConverter:: DESTINATION ${ZUCMTR_PACKAGE_DIR}
        COMPONENT development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZuCmtrConverterConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/ZuCmtrConverterConfig.cmake
                              INSTALL_DESTINATION ${ZUCMTR_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZuCmtrConverterConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZuCmtrConverterConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ZuCmtrConverterConfigVersion.cmake
        DESTINATION ${ZUCMTR_PACKAGE_DIR} COMPONENT development)

# The prefix is told relative to the file, so that the tree may be installed or moved anywhere.
file(RELATIVE_PATH ZUCMTR_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zucmtrconverter.pc.in
               ${CMAKE_CURRENT_BINARY_DIR}/zucmtrconverter.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zucmtrconverter.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
