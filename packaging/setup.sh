#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the Debian packages of the named groups that are missing:  packaging/setup.sh build run test
# Does nothing, at once, if all are there.
set -euo pipefail

list="$(dirname "${BASH_SOURCE[0]}")/debian-packages.txt"

wanted=()
for group in "$@"; do
  mapfile -t packages < <(awk -v group="$group:" '
    /^# group / { inside = ($3 == group) } /^[^#]/ && inside { print $1 }' "$list")
  if [ "${#packages[@]}" -eq 0 ]; then
    echo "setup: there is no group '$group' in $list" >&2
    exit 2
  fi
  wanted+=("${packages[@]}")
done

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  echo "setup: this is no Debian system; please see to it that you have what stands for these packages:" >&2
  printf '  %s\n' "${wanted[@]}" >&2
  exit 0
fi

declare -A installed=()
while read -r package status; do
  if [ "$status" = installed ]; then
    installed[$package]=1
  fi
done < <(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)

missing=()
for package in "${wanted[@]}"; do
  if [ -z "${installed[$package]:-}" ]; then
    missing+=("$package")
  fi
done
if [ "${#missing[@]}" -eq 0 ]; then
  exit 0
fi

as_root=(env DEBIAN_FRONTEND=noninteractive)
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup: please have an administrator install: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo env DEBIAN_FRONTEND=noninteractive)
fi

echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get -o Acquire::Retries=3 -q update
"${as_root[@]}" apt-get -o Acquire::Retries=3 -q install -y --no-install-recommends "${missing[@]}"
