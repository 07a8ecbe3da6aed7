"""The exceptions of the quillon package, and the viewer's error text."""

from __future__ import annotations

SEPARATOR = b"\xa7"


def parse_error_text(text: bytes) -> list[tuple[int, str]]:
    """Splits the viewer's error text (codes and messages alternating, all separated by the byte
    0xA7) into (code, message) pairs, the root error first."""
    if not text:
        return []
    parts = text.split(SEPARATOR)
    entries = []
    for i in range(0, len(parts), 2):
        code_text = parts[i].decode("latin-1").strip()
        message = parts[i + 1].decode("latin-1") if i + 1 < len(parts) else ""
        try:
            code = int(code_text)
        except ValueError:
            code = -1
        entries.append((code, message))
    return entries


class QuillonError(Exception):
    """Base of every error that the quillon package raises."""


class LibraryNotFoundError(QuillonError, OSError):
    """libquillon.so could not be loaded."""


class ViewerError(QuillonError):
    """The viewer refused an operation: no window could be made, or a frame could not be read."""


class DocumentError(QuillonError):
    """A visualisation document that did not load cleanly.

    Attributes:
        codes: every code of the error list after the load, the root cause first.
        errors: the same entries as (code, message) pairs.
        annotated: the document with the offending element between the comments
            ``<!--begin_offending_input-->`` and ``<!--end_offending_input-->``; empty when the
            fault has no place.
        loaded: True when the scene was loaded all the same and only a route was left without
            effect (its channel is already driven by an earlier route); False when the document
            was refused and the previous scene stays.
        groups: the channel groups that the routes need, as ``load`` returns them.
    """

    def __init__(self, code: int, errors: list[tuple[int, str]], annotated: str, loaded: bool,
                 groups: list[tuple[str, int]]):
        self.code = code
        self.errors = errors
        self.codes = [c for c, _ in errors] or [code]
        self.annotated = annotated
        self.loaded = loaded
        self.groups = groups
        first = errors[0][1].split("\n")[0].strip() if errors else ""
        super().__init__(f"the document did not load cleanly: {code}" + (f" {first}" if first else ""))


class StreamError(QuillonError, ValueError):
    """A .qcs file that is not a channel stream, or (when asked to be strict) one cut short."""


class StreamWarning(UserWarning):
    """A .qcs file whose last record is cut short; the whole records before it were read."""
