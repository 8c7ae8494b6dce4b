"""Tells whether a genome still holds what was dealt to shards: by its content, whatever its time stamps say.

Hashing reads the whole file, so a checksum comes with what the file system says of the file it was taken from. As long
as that is unchanged, the file is not read again. The time of the last change of the inode is part of it: unlike the time
of modification, it cannot be set back.
"""

from __future__ import annotations

import hashlib
import os
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class State:
    """What the file system says of a file; both times in nanoseconds."""

    inode: int
    size: int
    modified: int
    changed: int


@dataclass(frozen=True)
class Fingerprint:
    sha256: str
    state: State


def state_of(path: Path) -> State:
    status = os.stat(path)
    return State(status.st_ino, status.st_size, status.st_mtime_ns, status.st_ctime_ns)


def checksum(path: Path) -> str:
    with path.open("rb") as file:
        return hashlib.file_digest(file, "sha256").hexdigest()


def take_fingerprint(path: Path) -> Fingerprint:
    """The state is that before the file is read: a change since then is seen by whoever compares."""
    state = state_of(path)
    return Fingerprint(checksum(path), state)


def current_checksum(path: Path, known: Fingerprint | None) -> str:
    """The checksum of the file, which is read only if its state is not the known one."""
    if known is not None and state_of(path) == known.state:
        return known.sha256
    return checksum(path)
