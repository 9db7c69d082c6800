"""Opens views, with each of ParaView's three readers, and exports, and holds bounds, counts, sums and times against
"dump" and the Python package. Draws the pile, coloured by speed.

Usage: xvfb-run -a pvpython paraview_views.py ROOT brenmark [PICTURE]
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
from urllib.parse import unquote

import numpy as np
import paraview.simple as pv
from paraview import servermanager
from vtkmodules.util.numpy_support import vtk_to_numpy

ROOT, PROGRAM = pathlib.Path(sys.argv[1]).resolve(), os.path.abspath(sys.argv[2])
sys.path[:0] = [str(ROOT / "python"), str(ROOT / "tests" / "python")]
import brenmark  # noqa: E402
import dump_text  # noqa: E402

DECKS = ("pile-27", "collisions-24", "properties-24", "moving-walls-26")


# By their names: the classic one; the newer ones, which know no parts of datasets, with grids by name and without.
READERS = {"XDMFReader": "FileNames", "Xdmf3ReaderT": "FileName", "Xdmf3ReaderS": "FileName"}


def leaves(data, name=""):
    """All data sets of a tree with their names, in their order."""
    if not data.IsA("vtkCompositeDataSet"):
        return [(name, data)]
    found = []
    count = data.GetNumberOfPieces() if data.IsA("vtkMultiPieceDataSet") else data.GetNumberOfBlocks()
    for i in range(count):
        below = (data.GetMetaData(i).Get(data.NAME()) if data.HasMetaData(i) else None) or f"{name} {i}"
        one = data.GetPiece(i) if data.IsA("vtkMultiPieceDataSet") else data.GetBlock(i)
        if one is not None:
            # Grids of one name at several times get numbers.
            found += leaves(one, re.sub(r"\[\d+\]$", "", below))
    return found


def facts(points, arrays):
    """What is compared: count, bounds, sums."""
    found = {"count": len(points), "bounds": [*points.min(axis=0), *points.max(axis=0)]}
    found.update({name: values.sum(axis=0) for name, values in arrays.items()})
    return found


def shown(block, of_triangles=False):
    data = block.GetCellData() if of_triangles else block.GetPointData()
    arrays = {data.GetArrayName(i).partition(" [")[0].lower(): vtk_to_numpy(data.GetArray(i))
              for i in range(data.GetNumberOfArrays())}
    if "total force" in arrays:
        arrays["force"] = arrays["total force"]
    elif "force torque" in arrays:
        arrays = {"force": arrays["force torque"][:, :3], "torque": arrays["force torque"][:, 3:6], **arrays}
    return facts(vtk_to_numpy(block.GetPoints().GetData()), arrays)


def same(where, actual, expected):
    for name, value in expected.items():
        assert np.allclose(actual[name], value, rtol=1e-12, atol=1e-12), (where, name, actual[name], value)


def expected_of(step, arrays):
    """By the name of a view's grid, from the dump; walls, whose places a dump has as matrices, from the package."""
    at = f"timestep/{step.number}"
    named = {unquote(place): values for place, values in arrays.items()}
    found = {}
    for name in step.particles:
        here = f"{at}/particles/{name}"
        if len(named[f"{here}/ids"]):
            found[f"particles {name}"] = facts(named[f"{here}/position"], {
                "velocity": named[f"{here}/velocity"], "id": named[f"{here}/ids"][:, 0],
                "force": named[f"{here}/forceTorque"][:, :3], "torque": named[f"{here}/forceTorque"][:, 3:6]})
    for family, name in (("surfaceSurface", "contacts between particles"), ("surfaceGeometry", "contacts with geometry")):
        here = f"{at}/contacts/{family}"
        if len(named.get(f"{here}/position", ())):
            found[name] = facts(named[f"{here}/position"], {
                "normal overlap": named[f"{here}/normalOverlap"][:, 0], "normal force": named[f"{here}/normalForce"]})
    for name, wall in step.geometry.items():
        found[f"geometry {name}"] = facts(wall.vertices, {
            "force": named[f"{at}/geometryGroups/{name}/triangleForces"][:, :3],
            "torque": named[f"{at}/geometryGroups/{name}/triangleForces"][:, 3:6]})
    return found


def check_deck(path, folder):
    deck = brenmark.open(path)
    _, arrays = dump_text.read(PROGRAM, path)
    exported = folder / (path.stem + "-vtk")
    for arguments in (["view", path], ["export", path, "--format", "vtp", "--output", exported],
                      ["export", path, "--format", "ensight", "--output", exported, "--force"]):
        subprocess.run([PROGRAM, *map(str, arguments)], check=True, capture_output=True)
    compared = 0
    expected = {step.number: expected_of(step, arrays) for step in deck}
    for name, files in READERS.items():
        view = getattr(pv, name)(**{files: [str(path.with_suffix(".xmf"))]})
        require_times(view, deck)
        for step in deck:
            view.UpdatePipeline(step.time)
            found = leaves(servermanager.Fetch(view))
            names = [*expected[step.number], "domain"]
            assert len(found) == len(names), (path.name, name, step, found)
            if name != "Xdmf3ReaderS":
                assert [grid for grid, _ in found] == names, (path.name, name, step)
            for (grid, one), (_, data) in zip(expected[step.number].items(), found):
                same((path.name, name, step, grid), shown(data, grid.startswith("geometry")), one)
                compared += len(one)
        pv.Delete(view)
    return compared + check_export(deck, exported, expected)


def require_times(reader, deck):
    reader.UpdatePipelineInformation()
    assert np.array_equal(np.ravel(reader.TimestepValues), deck.times), (deck, reader.TimestepValues)


def check_export(deck, exported, expected):
    series, compared = pv.PVDReader(FileName=str(exported / "deck.pvd")), 0
    single = pv.EnSightReader(CaseFileName=str(exported / "deck.case"))  # of single precision
    require_times(series, deck)
    single.UpdatePipelineInformation()
    times = np.ravel(single.TimestepValues)
    assert np.allclose(times, deck.times, rtol=1e-6), times
    for step, time in zip(deck, times):
        single.UpdatePipeline(time)
        parts = dict(leaves(servermanager.Fetch(single)))
        series.UpdatePipeline(step.time)
        pieces = [data for _, data in leaves(servermanager.Fetch(series))]
        grids = expected[step.number]
        kinds = [kind for kind in ("particles", "contacts", "geometry") if any(n.startswith(kind) for n in grids)]
        assert len(pieces) == len(kinds)
        for kind, piece in zip(kinds, pieces):
            ones = [one for name, one in grids.items() if name.startswith(kind)]
            sums = {name: sum(one[name] for one in ones) for name in ones[0] if name not in ("bounds", "id")}
            sums["bounds"] = [*np.min([one["bounds"][:3] for one in ones], axis=0),
                              *np.max([one["bounds"][3:] for one in ones], axis=0)]
            same((deck, step, kind), shown(piece, kind == "geometry"), sums)
            assert np.allclose(shown(parts[kind])["bounds"], sums["bounds"], rtol=1e-6), (deck, step, kind)
            compared += len(sums) + 1
    return compared


def selectors(data):
    """Of the blocks with particles, by the words of ParaView's assembly."""
    names = [data.GetMetaData(i).Get(data.NAME()) for i in range(data.GetNumberOfBlocks())]
    return [re.sub(r"[^A-Za-z0-9_.-]", "", name) for name in names if name.startswith("particles")]


def draw(path, picture):
    view = pv.CreateView("RenderView")
    view.ViewSize = [960, 720]
    view.Background = [1, 1, 1]
    view.UseColorPaletteForBackground = 0
    view.OrientationAxesVisibility = 0
    reader = pv.XDMFReader(FileNames=[str(path.with_suffix(".xmf"))])
    reader.UpdatePipelineInformation()
    time = reader.TimestepValues[1]
    reader.UpdatePipeline(time)
    view.ViewTime = time
    grains = pv.ExtractBlock(Input=reader)
    grains.Selectors = [f"/Root/{name}" for name in selectors(servermanager.Fetch(reader))]
    glyphs = pv.Glyph(Input=grains, GlyphType="Sphere", ScaleArray=["POINTS", "radius"], ScaleFactor=2.0,
                      GlyphMode="All Points")
    glyphs.GlyphType.Radius = 0.5
    shown_glyphs = pv.Show(glyphs, view)
    pv.ColorBy(shown_glyphs, ("POINTS", "velocity", "Magnitude"))
    shown_glyphs.RescaleTransferFunctionToDataRange(False, True)
    shown_glyphs.SetScalarBarVisibility(view, True)
    bar = pv.GetScalarBar(pv.GetColorTransferFunction("velocity"), view)
    bar.Title, bar.ComponentTitle = "speed [m/s]", ""
    bar.RangeLabelFormat = "%.2f"
    bar.TitleColor = bar.LabelColor = [0.2, 0.2, 0.2]
    walls = pv.Show(reader, view)
    walls.Representation = "Wireframe"
    walls.ColorArrayName = ["POINTS", ""]
    walls.AmbientColor = walls.DiffuseColor = [0.35, 0.35, 0.35]
    walls.LineWidth = 2.0
    camera = view.GetActiveCamera()
    camera.SetFocalPoint(0, 0, 0.1)
    camera.SetPosition(0.25, -0.5, 0.3)
    camera.SetViewUp(0, 0, 1)
    pv.Render(view)
    pv.SaveScreenshot(picture, view)


def main():
    compared = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for sample in DECKS:
            path = folder / f"{sample}.dem"
            subprocess.run([PROGRAM, "convert", "-q", str(ROOT / "samples" / path.name), str(path)], check=True,
                           capture_output=True)
            compared += check_deck(path, folder)
        picture = sys.argv[3] if len(sys.argv) > 3 else str(folder / "pile.png")
        draw(folder / "pile-27.dem", picture)
        assert os.path.getsize(picture) > 10000
    print(f"{compared} bounds, counts and sums are the same in ParaView, in Python and in the dump")


main()
