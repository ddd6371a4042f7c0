#!/bin/sh
# changelog-date.sh CHANGELOG: the day of its newest entry, as in 2026-11-21.
set -eu
stamp=$(sed -n '/^ -- /{s/^ -- .*>  //p;q}' "$1")
LC_ALL=C date -u -d "$stamp" +%Y-%m-%d
