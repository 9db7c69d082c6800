"""How long ParaView takes to open a view and to show its last timestep, with each of its readers. Prints seconds.

Usage: xvfb-run -a pvpython opening_time.py NAME.xmf
"""
import os
import sys
import time

import paraview.simple as pv

path = os.path.abspath(sys.argv[1])
for reader, names in (("XDMFReader", "FileNames"), ("Xdmf3ReaderS", "FileName"), ("Xdmf3ReaderT", "FileName")):
    begin = time.perf_counter()
    source = getattr(pv, reader)(**{names: [path]})
    source.UpdatePipelineInformation()
    opened = time.perf_counter()
    times = source.TimestepValues
    source.UpdatePipeline(times[-1])
    shown = time.perf_counter()
    print(f"{reader}: {len(times)} timesteps opened in {opened - begin:.2f} s, the last shown {shown - opened:.2f} s "
          "later")
    pv.Delete(source)
