#!/bin/sh
# exports_test.sh LIBRARY EXPECTED: the library gives away the functions of the list and nothing else.
set -eu
nm -D --defined-only "$1" | cut -d' ' -f3 | c++filt | LC_ALL=C sort | diff "$2" -
