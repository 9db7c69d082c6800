#!/usr/bin/env bash
# Installs into a scratch folder, moves it, builds the README's host against it in the ways that are offered
# (find_package with either library, pkg-config), and lets each convert the sample deck while it listens to the signals.
# With add_subdirectory the host is configured and compiled, but not linked: that would build the library again.
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
for wanted in include/Brenmark/data_converter.h include/brenmark/plugin/contact_model_2_4.h bin/brenmark share/man/man1/brenmark.1 \
    share/man/man1/brenmark-convert.1 share/man/man1/brenmark-diff.1 BrenmarkConfig.cmake Brenmark.pc \
    libBrenmark.so bash-completion/completions/brenmark site-functions/_brenmark vendor_completions.d/brenmark.fish; do
    grep -qF "$wanted" <<<"$installed" || fail "not installed: $wanted"
done
if grep -rIl -e "$root" -e "$scratch/staged" "$prefix" >&2; then
    fail "the files above name a folder of this machine"
fi
library=$(dirname "$(find "$prefix" -name libBrenmark.so)")
paths=$(readelf -d "$build/bin/brenmark" "$prefix/bin/brenmark" "$library/libBrenmark.so" | sed -n 's/.*R\(UN\)\?PATH.*\[\(.*\)\]/\2/p')
! grep -E '^:|::|:$|^$' <<<"${paths:-none}" || fail "libraries of the working directory would be taken"

# The block of the README in a language.
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{/^\`\`\`/d;p}" "$root/README.md"; }
# configure WAY PLACE_OF_FIND_PACKAGE
configure()
{
    mkdir "$scratch/$1"
    block cpp >"$scratch/$1/main.cpp"
    block cmake | sed "s|^find_package.*|$2|" >"$scratch/$1/CMakeLists.txt"
    cmake -S "$scratch/$1" -B "$scratch/$1" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >"$scratch/log" 2>&1 ||
        fail "$1: $(cat "$scratch/log")"
}
compile() { cmake --build "$scratch/$1" --target "$2" >"$scratch/log" || fail "$1: $(cat "$scratch/log")"; }

configure default '&'
compile default host
for way in shared static; do
    configure $way "find_package(Brenmark 1.0 REQUIRED COMPONENTS $way)"
    compile $way host
done
configure subdirectory "add_subdirectory($root brenmark)"
compile subdirectory CMakeFiles/host.dir/main.cpp.o
# Not through a pipe: grep ends at the first match, and ldd, which writes on, would fail.
grep -q libBrenmark <<<"$(ldd "$scratch/shared/host")" || fail "the shared library isn't what the host uses"
! grep -q libBrenmark <<<"$(ldd "$scratch/static/host")" || fail "the static library isn't what the host uses"

# The samples of plug-ins, under the names that a sample deck asks for, without a look for any other package.
cmake -S "$root/samples/plugins" -B "$scratch/plugins" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_DISABLE_FIND_PACKAGE_Qt5=ON -DCMAKE_LIBRARY_OUTPUT_DIRECTORY="$scratch/home/Documents" \
    -DCONTACT_MODEL_NAME="My Model" -DEXTERNAL_FORCE_NAME="My Force" -DPARTICLE_FACTORY_NAME=MyFactoryLib \
    >"$scratch/log" 2>&1 || fail "plugins: $(cat "$scratch/log")"
cmake --build "$scratch/plugins" >"$scratch/log" || fail "plugins: $(cat "$scratch/log")"
as_user() { HOME=$scratch/home XDG_CONFIG_HOME=$scratch/home "$prefix/bin/brenmark" "$@" 2>&1; }
said=$(as_user convert "$root/samples/plugins-24.dem" "$scratch/bound") || fail "the sample plug-ins: $said"
! grep -qF "isn't known here" <<<"$said" || fail "not bound: $said"
said=$(as_user verify "$root/samples/plugins-24.dem" "$scratch/bound.dem") || fail "with the sample plug-ins: $said"
[ "$(as_user plugins | grep -c ', supported')" = 3 ] ||
    fail "not all of the sample plug-ins can be bound"

export PKG_CONFIG_PATH=$library/pkgconfig
mkdir "$scratch/pkgconfig"
# shellcheck disable=SC2046  # one word a flag
c++ -std=c++17 -fPIC -Wall -Wextra -Werror -DQT_NO_KEYWORDS $(pkg-config --cflags Brenmark) "$scratch/shared/main.cpp" \
    -o "$scratch/pkgconfig/host" $(pkg-config --libs Brenmark)

mkdir "$scratch/decks"
cp "$root"/samples/pile-27.* "$scratch/decks"
before=$(cd "$scratch/decks" && sha256sum pile-27.* && stat -c '%n %y' pile-27.*)
for way in default shared static pkgconfig; do
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
echo "converted by a host of each kind"
