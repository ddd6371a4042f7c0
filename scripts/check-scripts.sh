#!/bin/sh
# Runs shellcheck over all shell scripts that git knows, and over the template of bash's completion.
set -eu
cd "$(dirname "$0")/.."
git grep -zlE '^#!/bin/(ba)?sh' | xargs -0 shellcheck
shellcheck --shell=bash packaging/help/zucmtr.bash.in
