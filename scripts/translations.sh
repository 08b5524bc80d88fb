#!/bin/bash
# translations.sh: brings the catalogues of ui/translations up to date with the texts of ui/.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
for catalogue in ui/translations/fadewell_*.ts; do
    /usr/lib/qt6/bin/lupdate ui -I . -no-obsolete -locations none -silent -ts "$catalogue"
done
