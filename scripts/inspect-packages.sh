#!/bin/sh
# Looks into built Debian packages, of whatever processor: lintian, Debian's hardening flags and the functions that the
# libraries export.
#   scripts/inspect-packages.sh DIRECTORY BUILD_LOG    of the packages with their .changes, and of dpkg-buildpackage
set -eu
packages=$(cd "$1" && pwd)
log=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
cd "$(dirname "$0")/.."
place=$(mktemp -d /var/tmp/zucmtr-inspect.XXXXXX)
trap 'rm -rf "$place"' EXIT
trap 'exit 130' INT TERM
failed=

# The version of the standards is that of the older release of Debian, which the newer one's lintian remarks on.
printf '\n== lintian\n'
TMPDIR=$place lintian --allow-root --display-info --display-experimental --pedantic --tag-display-limit 0 \
    --suppress-tags out-of-date-standards-version --fail-on error,warning,info,pedantic,experimental \
    "$packages"/*.changes && echo 'no finding' || failed=yes

printf '\n== hardening\n'
for package in "$packages"/*.deb; do
    case $package in
    *-dbgsym_*) ;;
    *) dpkg-deb -x "$package" "$place/root" ;;
    esac
done
# Programs of another processor are not disassembled, so that their stack clash protection remains unknown.
# Whether there is a call that a fortified function could replace depends on the code, and control flow protection on the
# release of Debian: both are looked for in the commands.
find "$place/root" -type f \( -name '*.so*' -o -path '*/bin/*' \) | sort >"$place/binaries"
while read -r binary; do
    hardening-check --nofortify --nocfprotection "$binary" >"$place/hardening" 2>"$place/errors" ||
        { failed=yes; cat "$place/errors" >&2; }
    sed "s|$place/root||" "$place/hardening"
done <"$place/binaries"
grep -E ' -c [^ ]+\.(cpp|cxx)$' "$log" >"$place/commands"
flags=' -fstack-protector-strong .* -D_FORTIFY_SOURCE=[0-9] .* -ffp-contract=off '
echo "$(grep -c -e "$flags" "$place/commands") of $(wc -l <"$place/commands") compiler commands have the flags"
if grep -v -e "$flags" "$place/commands" >&2; then
    failed=yes
fi

printf '\n== exported functions\n'
for library in ZuCmtrConverter ZuCmtrConverterQt6; do
    tests/install/exports_test.sh "$(echo "$place"/root/usr/lib/*/lib$library.so.2)" tests/install/exports.txt &&
        echo "lib$library.so.2: eleven" || failed=yes
done
[ -z "$failed" ] || exit 1
