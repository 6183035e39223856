"""The example with Dask on a local cluster of two processes: the same samples as one call."""

import os
import pathlib
import sys

import numpy as np
import pytest

import pxlcc

da = pytest.importorskip("dask.array")
distributed = pytest.importorskip("distributed")

EXAMPLES = pathlib.Path(__file__).parents[1] / "examples"
sys.path.insert(0, str(EXAMPLES))
# The workers are processes of their own and look for the example where this one does.
os.environ["PYTHONPATH"] = os.pathsep.join([str(EXAMPLES), *filter(None, [os.environ.get("PYTHONPATH")])])

import dask_frames  # noqa: E402


@pytest.fixture(scope="module")
def client():
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            yield client


def expected_of(frame):
    y, chroma = pxlcc.convert(frame, "rgb24", "nv12", matrix="709")
    return np.concatenate([y.reshape(-1), chroma.reshape(-1)])


def test_a_stack_of_frames(client, rng):
    frames = rng.integers(0, 256, (13, 32, 48, 3), np.uint8)
    lazy = dask_frames.nv12_stack(da.from_array(frames, chunks=(4, 16, 48, 3)))
    assert lazy.shape == (13, 48, 48) and lazy.chunks[0] == (4, 4, 4, 1)
    result = lazy.compute()
    assert (result == dask_frames.nv12_block(frames)).all()
    assert (result.reshape(13, -1) == [expected_of(frame) for frame in frames]).all()
    processes = set(client.run(os.getpid).values())
    assert len(processes) == 2 and os.getpid() not in processes
    # any function of the package goes to the workers as it is
    lab = da.from_array(frames[0], chunks=(8, -1, -1)).map_blocks(pxlcc.to_lab, dtype=np.uint8).compute()
    assert (lab == pxlcc.to_lab(frames[0])).all()


def test_a_folder_of_frames(client, rng, tmp_path):
    frames = rng.integers(0, 256, (9, 30, 46, 3), np.uint8)
    (tmp_path / "in").mkdir()
    for i, frame in enumerate(frames):
        frame.tofile(tmp_path / "in" / f"frame_{i:04}.rgb24")
    files = dask_frames.convert_folder(client, tmp_path / "in", tmp_path / "out", (46, 30))
    assert [pathlib.Path(file).name for file in files] == [f"frame_{i:04}.nv12" for i in range(9)]
    pathlib.Path(files[0]).unlink()
    assert dask_frames.convert_folder(client, tmp_path / "in", tmp_path / "out", (46, 30)) == files
    for file, frame in zip(files, frames):
        assert (np.fromfile(file, np.uint8) == expected_of(frame)).all()
