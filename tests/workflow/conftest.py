"""Shared by the tests of the workflow; tests/workflow/run says which program they use."""

import os
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).parents[2] / "workflow" / "scripts"))


@pytest.fixture(scope="session")
def program() -> Path:
    """The program under test."""
    return Path(os.environ["QUARVO"]).resolve()
