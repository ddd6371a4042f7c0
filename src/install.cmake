# Library, public header, CMake package and pkg-config file.
include(CMakePackageConfigHelpers)

set(ZUCMTR_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/${ZUCMTR_PACKAGE})

install(TARGETS ZuCmtrConverter EXPORT ${ZUCMTR_PACKAGE}Targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
        NAMELINK_COMPONENT development)
install(FILES service/zucmtrlib.h DESTINATION ${ZUCMTR_HEADER_DIR} COMPONENT development)
install(EXPORT ${ZUCMTR_PACKAGE}Targets NAMESPACE ${ZUCMTR_PACKAGE}:: DESTINATION ${ZUCMTR_PACKAGE_DIR}
        COMPONENT development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZuCmtrConverterConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/${ZUCMTR_PACKAGE}Config.cmake
                              INSTALL_DESTINATION ${ZUCMTR_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/${ZUCMTR_PACKAGE}ConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${ZUCMTR_PACKAGE}Config.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/${ZUCMTR_PACKAGE}ConfigVersion.cmake
        DESTINATION ${ZUCMTR_PACKAGE_DIR} COMPONENT development)

# The prefix is told relative to the file, so that the tree may be installed or moved anywhere.
file(RELATIVE_PATH ZUCMTR_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zucmtrconverter.pc.in
               ${CMAKE_CURRENT_BINARY_DIR}/${ZUCMTR_PACKAGE_LOWER}.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${ZUCMTR_PACKAGE_LOWER}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
