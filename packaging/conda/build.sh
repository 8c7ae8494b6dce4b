#!/usr/bin/env bash
# Run by conda-build in the unpacked sources. CMAKE_ARGS comes with its compilers.
set -euo pipefail
# shellcheck disable=SC2086
cmake -S . -B build/conda -G Ninja ${CMAKE_ARGS-} -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$PREFIX" \
  -DCMAKE_PREFIX_PATH="$PREFIX" -DQUARVO_WARNINGS_AS_ERRORS=OFF -DQUARVO_BUILD_REPORT=ON
cmake --build build/conda
cmake --install build/conda
