# Which Qt everything is built with. Qt 5 is the default; with Qt 6 the library, its CMake package and its pkg-config file
# have names of their own, so that both may be installed side by side.
set(ZUCMTR_QT 5 CACHE STRING "Qt to build with: 5 or 6")
set_property(CACHE ZUCMTR_QT PROPERTY STRINGS 5 6)
if(ZUCMTR_QT EQUAL 5)
  set(ZUCMTR_QT_MINIMUM 5.11)
  set(ZUCMTR_PACKAGE ZuCmtrConverter)
elseif(ZUCMTR_QT EQUAL 6)
  set(ZUCMTR_QT_MINIMUM 6.4) # its decoders know the encodings of ICU by name
  set(ZUCMTR_PACKAGE ZuCmtrConverterQt6)
else()
  message(FATAL_ERROR "ZUCMTR_QT is ${ZUCMTR_QT}; it has to be 5 or 6")
endif()
# The header is the same for both, but two packages must not have one file.
set(ZUCMTR_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR})
if(ZUCMTR_QT EQUAL 6)
  string(APPEND ZUCMTR_HEADER_DIR /${ZUCMTR_PACKAGE})
endif()
string(TOLOWER ${ZUCMTR_PACKAGE} ZUCMTR_PACKAGE_LOWER)
find_package(Qt${ZUCMTR_QT} ${ZUCMTR_QT_MINIMUM} REQUIRED COMPONENTS Core)

# zucmtr_find_qt(COMPONENT...): further parts of the same Qt.
macro(zucmtr_find_qt)
  find_package(Qt${ZUCMTR_QT} ${ZUCMTR_QT_MINIMUM} REQUIRED COMPONENTS ${ARGN})
endmacro()

# zucmtr_add_resources(VARIABLE FILE...) and zucmtr_add_translation(VARIABLE FILE...): Qt's own commands of these names.
macro(zucmtr_add_resources)
  cmake_language(CALL qt${ZUCMTR_QT}_add_resources ${ARGN})
endmacro()
macro(zucmtr_add_translation)
  cmake_language(CALL qt${ZUCMTR_QT}_add_translation ${ARGN})
endmacro()
