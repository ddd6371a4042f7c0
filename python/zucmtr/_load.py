"""Records from files that are not beside each other, or from memory, as other COMTRADE readers take them."""

from __future__ import annotations

import os
import shutil
import tempfile
import weakref
from collections.abc import Callable
from pathlib import Path
from typing import Any, Optional, Union

from ._errors import own_names
from ._paths import PathLike, absolute, check_readable, text_of
from ._record import Record
from ._source import Source

Content = Union[str, bytes]
SUFFIXES = (".cfg", ".dat", ".hdr", ".inf")


def load(
    cfg: PathLike,
    dat: Optional[PathLike] = None,
    hdr: Optional[PathLike] = None,
    inf: Optional[PathLike] = None,
    *,
    encoding: str = "",
) -> Record:
    """Open a record whose files have other names than the configuration, or are elsewhere.

    Parameters
    ----------
    cfg
        The configuration. Without the other parameters this is ``open``.
    dat, hdr, inf
        The other files. A record with one of them has those alone that are given; ``dat`` is found beside ``cfg`` if it
        is None.
    encoding
        Encoding of the texts, such as ``"cp866"``; found out if it is empty.

    Returns
    -------
    Record
        As ``open`` gives it.

    Raises
    ------
    FileError
        A file cannot be read.
    RecordError
        It is no record, or a damaged one.
    """
    if dat is None and hdr is None and inf is None:
        return Record(cfg, encoding=encoding)
    given = (cfg, dat or _beside(text_of(cfg)), hdr, inf)
    for file in given:
        if file is not None:
            check_readable(file)
    files = [None if file is None else absolute(file) for file in given]

    def bring(directory: Path) -> dict[str, str]:
        links = {str(directory / f"record{suffix}"): file for suffix, file in zip(SUFFIXES, files) if file}
        for link, file in links.items():
            os.symlink(file, link)
        return links

    return Gathered(text_of(cfg), encoding, bring, (_load_again, (*files, encoding)))


def read(
    cfg: Content, dat: Content, hdr: Optional[Content] = None, inf: Optional[Content] = None, *, encoding: str = ""
) -> Record:
    """Take a record from memory, as from a ZIP file or a database.

    Parameters
    ----------
    cfg, dat, hdr, inf
        Contents of the files: bytes as stored, or texts.
    encoding
        Encoding of the bytes, such as ``"cp866"``; found out if it is empty.

    Returns
    -------
    Record
        As ``open`` gives it; its ``path`` is ``record.cfg``.

    Raises
    ------
    RecordError
        It is no record, or a damaged one.
    """
    contents = (cfg, dat, hdr, inf)

    def bring(directory: Path) -> dict[str, str]:
        for suffix, content in zip(SUFFIXES, contents):
            if content is not None:
                (directory / f"record{suffix}").write_bytes(
                    content.encode(encoding or "utf-8") if isinstance(content, str) else content
                )
        return {f"{directory}/": ""}

    return Gathered("record.cfg", encoding, bring, (_read_again, (*contents, encoding)))


class Gathered(Record):
    """A record whose files are brought together in a temporary directory, until it is closed or gone with its channels."""

    def __init__(
        self, name: str, encoding: str, bring: Callable[[Path], dict[str, str]], again: tuple[Any, ...]
    ) -> None:
        self._path = name
        self._options = {"encoding": encoding, "ini": "", "defaults": "", "device": ""}
        self._again = again
        directory = Path(tempfile.mkdtemp(prefix="zucmtr-"))
        try:
            names = bring(directory)
            own_names.update(names)
            self._read(str(directory / "record.cfg"))
            self._source.again = _source_again, again
        except BaseException:
            _remove(directory, os.getpid())
            raise
        self._remove = weakref.finalize(self._source, _remove, directory, os.getpid())

    def close(self) -> None:
        super().close()
        self._remove()

    def __reduce__(self) -> tuple[Any, ...]:
        return self._again


def _remove(directory: Path, process: int) -> None:
    if os.getpid() != process:
        return  # a child, which has inherited what its parent needs
    for name in [name for name in own_names if name.startswith(f"{directory}/")]:
        own_names.pop(name, None)
    shutil.rmtree(directory, ignore_errors=True)


def _beside(cfg: str) -> Optional[str]:
    stem = os.path.splitext(cfg)[0]
    return next((stem + dat for dat in (".dat", ".DAT", ".Dat") if os.path.exists(stem + dat)), None)


def _source_again(opening: Callable[..., Record], arguments: tuple[Any, ...]) -> Source:
    return opening(*arguments)._source


def _load_again(cfg: str, dat: Optional[str], hdr: Optional[str], inf: Optional[str], encoding: str) -> Record:
    return load(cfg, dat, hdr, inf, encoding=encoding)


def _read_again(
    cfg: Content, dat: Content, hdr: Optional[Content], inf: Optional[Content], encoding: str
) -> Record:
    return read(cfg, dat, hdr, inf, encoding=encoding)
