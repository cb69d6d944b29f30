#!/usr/bin/env bash
# Installs every Debian package the project needs. Returns at once when all are present.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config ccache
  qt6-base-dev qt6-base-dev-tools
  libsqlite3-dev sqlite3
  libpq-dev postgresql
  libgtest-dev libgmock-dev googletest
  libbenchmark-dev
  clang libclang-rt-dev
  clang-format
  fonts-wqy-microhei
  python3 python3-ezdxf
  libxlsxwriter-dev libreoffice-calc-nogui
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "setup: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
