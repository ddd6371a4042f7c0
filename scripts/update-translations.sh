#!/bin/sh
# Brings tools/zucmtr/translations up to date with the texts in the sources.
#   scripts/update-translations.sh           collects the texts; translate the unfinished ones, with Qt Linguist, say
#   scripts/update-translations.sh --check   changes nothing; fails if a text is missing, unfinished or obsolete
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh build
lupdate=$(command -v lupdate || echo /usr/lib/qt5/bin/lupdate)
catalogue=tools/zucmtr/translations/zucmtr_ru.ts
target=$catalogue
if [ "${1:-}" = --check ]; then
    target=$(mktemp --suffix=.ts)
    trap 'rm -f "$target"' EXIT
    cp "$catalogue" "$target"
fi
"$lupdate" -silent -extensions cpp,h -locations none -no-obsolete -source-language en -target-language ru_RU \
    -tr-function-alias translate+=Tr,translate+=HelpText tools -ts "$target"
if [ "${1:-}" = --check ]; then
    cmp "$target" "$catalogue" || { echo "run scripts/update-translations.sh" >&2; exit 1; }
    ! grep -n 'type="unfinished"' "$catalogue" || { echo "unfinished translations in $catalogue" >&2; exit 1; }
fi
