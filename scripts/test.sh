#!/usr/bin/env bash
# Builds KORVAN and runs every test. Called by the README's test command and by CI.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh build
ctest --test-dir build --output-on-failure -j"$(nproc)"
