#!/bin/sh
# needed_test.sh QT LIBRARY PROGRAM PICTURE: what the loader has to load, as the files name it. Each library that the program
# names is paid for at every start.
set -eu
qt=$1 library=$2 program=$3 picture=$4
needed() { readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | LC_ALL=C sort; }

echo '-- the shared library needs Qt Core and the languages run-time libraries'
needed "$library" | diff - /dev/fd/3 3<<END
lib${qt}Core.so.$(echo "$qt" | tr -dc 0-9)
libc.so.6
libgcc_s.so.1
libm.so.6
libstdc++.so.6
END

echo '-- what draws is loaded by the module alone'
if needed "$program" | grep -E 'Gui|Svg|Widgets|crypto|matio'; then
    exit 1
fi
needed "$picture" | grep -q "lib${qt}Gui"
nm -D --defined-only "$picture" | cut -d' ' -f3 | diff - /dev/fd/3 3<<END
ZuCmtrPicture
END
