#!/bin/sh
# Checks that test results on this machine mean something; says what to do if they do not. A /dev/null that a program
# has replaced by a plain file swallows nothing, and tests behave as on no other machine.
set -eu

kind=$(stat -L -c '%F %t:%T' /dev/null 2>&1) || true
if [ "$kind" != 'character special file 1:3' ]; then
    {
        echo "check-machine.sh: /dev/null is not the null device but: $kind"
        echo 'Repair it as root, then find what has replaced it:'
        echo '    rm -f /dev/null && mknod -m 666 /dev/null c 1 3'
    } >&2
    exit 1
fi
if [ ! -r /dev/null ] || [ ! -w /dev/null ]; then
    echo 'check-machine.sh: no permission to use /dev/null; repair it as root: chmod 666 /dev/null' >&2
    exit 1
fi
