#!/usr/bin/env bash
# make_demo_library.sh BIN OUT   makes the demonstration library that comes with the program, by the
#                                programs in BIN; called in the project's folder by the build
set -euo pipefail
. packaging/demo.sh
bin=$1
work=$(mktemp -d "$(dirname "$2")/demo-XXXXXX")
trap 'rm -rf "$work"' EXIT
demo=$work/$(basename "$2")
make_demo_library >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
mv "$demo" "$2"
