#!/bin/bash
# walk_pictures.sh [FOLDER]: the pictures walk-*.png of a newcomer's way through the real program, as the last of
# the tests walks it (docs/pictures, if no folder is named). ./test builds it.
set -uo pipefail
folder=${1:-$(dirname "$(readlink -f "$0")")/../docs/pictures}
mkdir -p "$folder" && folder=$(readlink -f "$folder") || exit
cd "$(dirname "$(readlink -f "$0")")/.." || exit
rm -f "$folder"/walk-*.png
FADEWELL_WALK_PICTURES=$folder exec build/tests/walk_tests --gtest_brief=1
