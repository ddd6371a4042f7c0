# The numbers of recordings and records have their lowest byte first, and are read and written where they are.
if(CMAKE_CXX_BYTE_ORDER STREQUAL "BIG_ENDIAN")
  message(FATAL_ERROR "Big-endian processors are not supported: recordings and records are little-endian, and their numbers "
                      "are used in place, without turning bytes round.")
endif()
