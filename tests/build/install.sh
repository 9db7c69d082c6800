#!/usr/bin/env bash
# Installs into a scratch folder, moves it, builds a small host against it in both ways that are offered (find_package
# and pkg-config), and lets each convert the sample deck while it listens to the signals.
# Usage: install.sh ROOT BUILD
set -euo pipefail
root=$1
build=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() { printf '%s\n' "$*" >&2; exit 1; }

cmake --install "$build" --prefix "$scratch/staged" >"$scratch/install.log" || fail "$(cat "$scratch/install.log")"
# Neither package may depend on where it was installed at first.
prefix=$scratch/moved
mv "$scratch/staged" "$prefix"
installed=$(cd "$prefix" && find . -type f -o -type l | sort)
for wanted in include/Brenmark/data_converter.h bin/brenmark share/man/man1/brenmark.1 BrenmarkConfig.cmake Brenmark.pc \
    libBrenmark.so; do
    grep -qF "$wanted" <<<"$installed" || fail "not installed: $wanted"
done
if grep -rIl -e "$root" -e "$scratch/staged" "$prefix" >&2; then
    fail "the files above name a folder of this machine"
fi
library=$(dirname "$(find "$prefix" -name libBrenmark.so)")

cp -r "$root/tests/build/host" "$scratch/host"
cmake -S "$scratch/host" -B "$scratch/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$scratch/cmake" >"$scratch/build.log" || fail "$(cat "$scratch/build.log")"

export PKG_CONFIG_PATH=$library/pkgconfig
mkdir "$scratch/pkgconfig"
# shellcheck disable=SC2046  # one word a flag
c++ -std=c++17 -Wall -Wextra -Werror $(pkg-config --cflags Brenmark) "$scratch/host/main.cpp" \
    -o "$scratch/pkgconfig/host" $(pkg-config --libs Brenmark)

mkdir "$scratch/decks"
cp "$root"/samples/pile-27.* "$scratch/decks"
before=$(cd "$scratch/decks" && sha256sum pile-27.* && stat -c '%n %y' pile-27.*)
for way in cmake pkgconfig; do
    source=$scratch/decks/pile-27.dem
    target=$scratch/decks/$way-out
    said=$(LD_LIBRARY_PATH=$library "$scratch/$way/host" "$source" "$target") || fail "host ($way) failed: $said"
    # Four timesteps are eight steps; the last value is the total, then the end is told.
    expected="Converting simulation $source to $target. 8
0 1 2 3 4 5 6 7 8 completed"
    [ "$said" = "$expected" ] || fail "host ($way) said: $said"
    for timestep in 0 1 2 3; do
        [ -s "${target}_data/$timestep.h5" ] || fail "host ($way): no ${target}_data/$timestep.h5"
    done
done
[ "$before" = "$(cd "$scratch/decks" && sha256sum pile-27.* && stat -c '%n %y' pile-27.*)" ] || fail "the source has changed"
echo "converted by a host of either kind"
