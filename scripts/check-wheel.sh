#!/bin/sh
# Builds the wheel as docs/python.md says, without a network where that can be had, installs it into a virtual environment
# with the system's NumPy, and converts and reads a recording with it.
#   scripts/check-wheel.sh [WHEEL]       a wheel that was built before, instead of a new one
#
# It compiles everything anew, which takes minutes, so that it is run by hand.
set -eu
cd "$(dirname "$0")/.."
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

wheel=${1:-}
if [ -z "$wheel" ]; then
    offline=
    if unshare -n true 2>/dev/null; then
        offline='unshare -n'
    fi
    $offline /usr/bin/python3 -m pip wheel --no-build-isolation --no-deps --wheel-dir "$place" .
    wheel=$(echo "$place"/zucmtr-*.whl)
fi
/usr/bin/python3 -m venv --system-site-packages "$place/venv"
"$place/venv/bin/python" -m pip install --no-index --no-deps --quiet "$wheel"
cd "$place"
"$place/venv/bin/python" - <<'END'
import pathlib
import zucmtr

installed = pathlib.Path(zucmtr.__file__).parent
assert "venv" in installed.parts, installed
print("in the wheel:", *sorted(file.name for file in installed.iterdir() if ".so" in file.suffixes))
END
if command -v zucmtr >/dev/null; then
    zucmtr=zucmtr
else
    zucmtr=$OLDPWD/build/release/tools/zucmtr/zucmtr
fi
"$zucmtr" sample --out station --fault AG >/dev/null
"$place/venv/bin/python" - <<'END'
import zucmtr

recording = "station/Vostochnaya_fault.ZU"
done = zucmtr.convert(recording, ".")
with zucmtr.open(done.record) as record, zucmtr.open(recording) as same:
    assert len(record) > 1000
    for one, other in zip(record.analog, same.analog):
        assert (one.codes == other.codes).all()
    print(done.record, record.fault().kind)
END
echo "the wheel works"
