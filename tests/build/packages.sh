#!/usr/bin/env bash
# Makes the Debian packages, has lintian look at them, and installs, uses and removes them on a root that holds nothing
# but Debian's smallest system: the command line, the Python package, and the development files for the README's host.
# Needs root, and a mirror as apt-get has it. Takes some minutes and 2 GB.
# Usage: packages.sh ROOT BUILD
set -euo pipefail
root=$1
build=$2
scratch=$(mktemp -d)
bare=$scratch/bare
leave()
{
    umount -q "$bare/proc" 2>/dev/null || true
    rm -rf --one-file-system "$scratch"
}
trap leave EXIT

fail() { printf '%s\n' "$*" >&2; exit 1; }
say() { printf '%s\n' "$*" >&2; }
quiet() { "$@" >"$scratch/log" 2>&1 </dev/null || fail "$* failed: $(tail -n 40 "$scratch/log")"; }

[ "$(id -u)" = 0 ] || fail "only root can install on another root"
quiet cpack -G DEB --config "$build/CPackConfig.cmake" -B "$scratch/packages"
rm -rf "$scratch/packages/_CPack_Packages"
packages=$(cd "$scratch/packages" && ls ./*.deb)
say "$packages"

# Findings that can't be helped are overridden in cmake/debian, each with its reason.
said=$(lintian --fail-on error,warning --allow-root "$scratch"/packages/*.deb) || fail "lintian: $said"
say "lintian finds nothing serious"

# Debian's smallest system, from where this one has its packages.
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Codename: bookworm' | head -n 1)
[ -n "$mirror" ] || fail "apt-get knows no mirror of Debian 12"
quiet debootstrap --variant=minbase bookworm "$bare" "$mirror"
quiet mount -t proc proc "$bare/proc"
inside()
{
    chroot "$bare" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive HOME=/root "$@"
}
install() { quiet inside apt-get -q -y install --no-install-recommends "$@"; }
cp -r "$scratch/packages" "$bare/packages"
cp -r "$root/samples" "$bare/samples"
quiet inside apt-get -q update
deb() { grep -o "\./$1_[^ ]*\.deb" <<<"$packages"; }
package() { printf '/packages/%s' "$(deb "$1")"; }

# The command line is one package beside what it is linked with.
install "$(package brenmark)"
said=$(inside brenmark convert --verify /samples/pile-27.dem /tmp/pile 2>&1) || fail "the installed command line: $said"
pages=$(inside find /usr/share/man/man1 -name 'brenmark*' | wc -l)
commands=$(inside brenmark --help | sed -n '/^Commands:/,/^$/p' | grep -c '^  [a-z]')
[ "$pages" = "$((commands + 1))" ] || fail "$pages manual pages of $commands commands"
said=$(inside dpkg-query -W -f '${Package}\n')
! grep -qE '^libbrenmark|-dev$' <<<"$said" || fail "the command line brought more along than it needs: $said"

# The Python package is found by Debian's Python, and calls the command line.
install "$(package python3-brenmark)"
said=$(inside /usr/bin/python3 -c '
import brenmark
assert brenmark.__file__.startswith("/usr/lib/python3/dist-packages/"), brenmark.__file__
brenmark.convert("/samples/properties-24.dem", "/tmp/properties.dem")
print(len(brenmark.open("/tmp/properties.dem")))
' 2>&1) || fail "the Python package: $said"
[ "$said" = 2 ] || fail "the Python package finds other timesteps than the 2 of the sample: $said"

# The README's host, by CMake with either library, and by pkg-config.
install "$(package libbrenmark1)" "$(package libbrenmark-dev)" g++ cmake make pkg-config
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{/^\`\`\`/d;p}" "$root/README.md"; }
for way in shared static; do
    mkdir -p "$bare/host/$way"
    block cpp >"$bare/host/$way/main.cpp"
    block cmake | sed "s|^find_package.*|find_package(Brenmark 1.0 REQUIRED COMPONENTS $way)|" \
        >"$bare/host/$way/CMakeLists.txt"
    quiet inside cmake -S /host/$way -B /host/$way
    quiet inside cmake --build /host/$way
done
quiet inside sh -c 'mkdir /host/pkg-config
    c++ -std=c++17 -fPIC $(pkg-config --cflags Brenmark) /host/shared/main.cpp -o /host/pkg-config/host \
        $(pkg-config --libs Brenmark)'
for way in shared static pkg-config; do
    said=$(inside /host/$way/host /samples/pile-27.dem /tmp/$way 2>&1) || fail "host ($way): $said"
    [ -s "$bare/tmp/${way}_data/3.h5" ] || fail "host ($way) made no deck: $said"
done
grep -q libBrenmark.so.1 <<<"$(inside ldd /host/shared/host)" || fail "the shared library isn't what the host uses"

# Whoever removes them has nothing left of them.
quiet inside apt-get -q -y purge brenmark python3-brenmark libbrenmark1 libbrenmark-dev
rm -rf "$bare/packages" "$bare/host" "$bare"/tmp/*
left=$(inside find / -xdev -iname '*brenmark*' -not -path '/var/log/*')
[ -z "$left" ] || fail "left after removal: $left"
! grep -q Brenmark <<<"$(inside ldconfig -p)" || fail "the library is still known to the linker"
echo "installed, used and removed: $(tr '\n' ' ' <<<"$packages")"
