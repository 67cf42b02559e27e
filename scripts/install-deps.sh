#!/usr/bin/env bash
# Installs every Debian package that Vorix builds, tests, benchmarks or fuzzes with.
# Idempotent: asks apt only for what is missing, and refreshes the package lists only then.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  libsndfile1-dev
  lv2-dev lilv-utils liblilv-dev sordi
  lsp-plugins-lv2
  libfreetype-dev fonts-liberation2 libpng-dev zlib1g-dev libx11-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all ${#packages[@]} packages present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -q
"${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
