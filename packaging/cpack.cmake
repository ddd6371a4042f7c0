# Debian packages from the install components: cpack -G DEB in the build directory.
#   runtime -> libzucmtrconverter2, development -> libzucmtrconverter-dev, program -> zucmtr, python -> python3-zucmtr
set(ZUCMTR_PACKAGE_MAINTAINER "ZuCmtrConverter authors <zucmtrconverter@example.org>" CACHE STRING
    "Who stands in the packages as their maintainer")
set(debian ${CMAKE_CURRENT_SOURCE_DIR}/debian)
set(control ${CMAKE_CURRENT_BINARY_DIR}/control)
set(library libzucmtrconverter${PROJECT_VERSION_MAJOR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_NAME zucmtrconverter)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${ZUCMTR_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development program)
if(TARGET zucmtr_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# What only a Debian package has, done on the staged files.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/finish.cmake)
set(CPACK_ZUCMTR_DEBIAN_DIR ${debian})
set(CPACK_ZUCMTR_CONTROL_DIR ${control})
set(CPACK_ZUCMTR_LIBRARY_PACKAGE ${library})
# cpack takes the name of a script for its purpose.
foreach(script postinst prerm)
  configure_file(${debian}/python3-zucmtr.${script} ${control}/${script} COPYONLY)
endforeach()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
get_target_property(library_dir ZuCmtrConverter BINARY_DIR)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${library_dir})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/symbols ${debian}/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "converts fault recordings into COMTRADE (library)
Reads the recordings of digital fault recorders (.ZU files with their
continuations) and writes COMTRADE records (IEEE C37.111), revision 1999
or 2013. This package holds the shared library for host applications.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzucmtrconverter-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), qtbase5-dev (>= 5.11)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "converts fault recordings into COMTRADE (development)
Reads the recordings of digital fault recorders (.ZU files with their
continuations) and writes COMTRADE records (IEEE C37.111). This package
holds the header, the files for CMake and pkg-config, and an example.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME zucmtr)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${library} (>= ${PROJECT_VERSION})")
# A catalogue on a server; files need no driver of Qt's.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "libqt5sql5-psql")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "converts fault recordings into COMTRADE (program)
Reads the recordings of digital fault recorders (.ZU files with their
continuations) and writes COMTRADE records (IEEE C37.111), revision 1999
or 2013. This package holds the command-line program.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-zucmtr)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
# The extension is for the version of Python that it was compiled with, as its name says.
math(EXPR next_minor "${Python3_VERSION_MINOR} + 1")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "${library} (>= ${PROJECT_VERSION}), python3 (>= 3.${Python3_VERSION_MINOR}~), python3 (<< 3.${next_minor}), python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pandas, python3-xarray, python3-matplotlib")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${control}/postinst ${control}/prerm)
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "reads fault recordings and COMTRADE records (Python 3)
Reads the recordings of digital fault recorders (.ZU files with their
continuations) and COMTRADE records (IEEE C37.111) of any form as NumPy
arrays, finds faults in them and converts recordings. This package holds
the module zucmtr for Python 3.")

include(CPack)
