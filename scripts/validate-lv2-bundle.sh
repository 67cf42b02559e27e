#!/usr/bin/env bash
# Checks a built LV2 bundle against the LV2 vocabularies installed with lv2-dev: runs lv2_validate
# (which needs sord_validate, package sordi) on every Turtle file of the bundle and fails on any
# error or warning it reports, printing them.
#
#   scripts/validate-lv2-bundle.sh BUILD_DIR/lv2/vorix.lv2
set -uo pipefail

bundle="${1:-}"
if [ -z "$bundle" ] || [ ! -d "$bundle" ]; then
    echo "usage: validate-lv2-bundle.sh BUNDLE_DIR" >&2
    exit 1
fi
for tool in lv2_validate:lv2-dev sord_validate:sordi; do
    if ! command -v "${tool%%:*}" >/dev/null; then
        echo "validate-lv2-bundle: ${tool%%:*} is missing (package ${tool#*:}," \
             "which scripts/install-deps.sh installs)" >&2
        exit 2
    fi
done

shopt -s nullglob
files=("$bundle"/*.ttl)
if [ ${#files[@]} -eq 0 ]; then
    echo "validate-lv2-bundle: no Turtle files in $bundle" >&2
    exit 2
fi

report="$(lv2_validate "${files[@]}" 2>&1)"
status=$?
summary="$(grep -E '^Found [0-9]+ errors' <<<"$report")"
problems="$(grep -ciE '(^|: )(error|warning)' <<<"$report")"
if [ $status -ne 0 ] || [ "$problems" -ne 0 ] || ! grep -q '^Found 0 errors' <<<"$summary"; then
    echo "$report"
    echo "validate-lv2-bundle: $bundle fails validation (exit $status, $problems errors and warnings)" >&2
    exit 1
fi
echo "validate-lv2-bundle: ${#files[@]} files of $bundle: $summary"
