#!/usr/bin/env bash
# Holds the types of the Python package against its code, installs it as a user does, without a network, and makes
# tables with it.
#
# Usage: installed.sh ROOT brenmark
set -euo pipefail

root=$1 program=$(readlink -f "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp -r "$root/python" "$folder/source" # setuptools builds beside its sources
(cd "$folder/source" && mypy --cache-dir "$folder/types")
/usr/bin/python3 -m pip install --quiet --no-build-isolation --no-index --no-deps --target "$folder/site" "$folder/source"
"$program" convert -q "$root/samples/properties-24.dem" "$folder/deck.dem" 2>/dev/null
cd "$folder"
PYTHONPATH=$folder/site /usr/bin/python3 - <<'END'
import brenmark

assert "/site/" in brenmark.__file__, brenmark.__file__
step = brenmark.open("deck.dem")[-1]
ball = step.particles["Ball"].to_dataframe()
assert len(ball) == 20 and {"ids", "velocity_z", "orientation_w", "Pair_2", "Tag"} <= set(ball.columns), ball.columns
assert ball["velocity_z"].sum() == step.particles["Ball"].velocity[:, 2].sum()
pairs = step.contacts["surface-geometry"].to_dataframe()
assert len(pairs) == 50 and {"normal_overlap", "normal_force_x", "Wet (film)"} <= set(pairs.columns), pairs.columns
END
