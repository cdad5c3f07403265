#!/usr/bin/env python3
"""The golden multipart bodies, read back by Python's own parser of mail: what stands in them is what was meant.

    parse_golden.py [FOLDER]   reads the bodies of the folder, or of Golden beside this script
"""

import email.parser
import email.policy
import pathlib
import sys
import unittest

FOLDER = pathlib.Path(sys.argv.pop(1)) if len(sys.argv) > 1 else pathlib.Path(__file__).parent / "Golden"


def counted(number):
    return f"00000000-0000-4000-8000-{number:012}"


BOUNDARY = "Boundary-" + counted(1)
BYTES = bytes(range(256)) + b"\r\n--Boundary-00000000-00\r\n\r\n\0"


def parts_of(body, boundary):
    """(name, file name, type, content) of each part, and what the parser found wrong."""
    head = f"Content-Type: multipart/form-data; boundary={boundary}\r\n\r\n".encode()
    message = email.parser.BytesParser(policy=email.policy.HTTP).parsebytes(head + body)
    if not message.is_multipart():
        return [], message.defects
    parts, defects = [], list(message.defects)
    for part in message.iter_parts():
        disposition = part["Content-Disposition"]
        names = disposition.params if disposition is not None else {}
        kind = part["Content-Type"]
        parts.append((names.get("name"), names.get("filename"),
                      kind.content_type if kind is not None else None, part.get_payload(decode=True)))
        defects += part.defects
    return parts, defects


class GoldenBodies(unittest.TestCase):
    maxDiff = None

    def check(self, name, *expected, boundary=BOUNDARY, close=b""):
        parts, defects = parts_of((FOLDER / name).read_bytes() + close, boundary)
        self.assertEqual(list(expected), parts)
        self.assertEqual([], defects)

    PHOTO = ("photo", counted(2) + ".jpg", "image/jpeg", BYTES)
    VIDEO = ("video", counted(2) + ".mp4", "video/mp4", b"moov")

    def test_photo(self):
        self.check("photo", ("type", None, None, b"photo"), self.PHOTO)

    def test_video(self):
        self.check("video", ("type", None, None, b"video"), ("video", counted(2) + ".mp4", "video/quicktime", b"moov"))

    def test_the_count_stands_before_the_file(self):
        self.check("photo-pending", ("type", None, None, b"photo"), ("num_pending_media", None, None, b"3"), self.PHOTO)
        self.check("video-pending", ("type", None, None, b"video"), ("num_pending_media", None, None, b"-1"), self.VIDEO)

    def test_the_identifiers_stand_after_the_file(self):
        self.check("photo-ids", ("type", None, None, b"photo"), self.PHOTO, ("photo_ids", None, None, b'["a", "b"]'))
        self.check("video-ids", ("type", None, None, b"video"), self.VIDEO, ("photo_ids", None, None, b'["7"]'))

    def test_no_bytes(self):
        self.check("no-bytes", ("type", None, None, b"photo"), ("photo", counted(2) + ".jpg", "image/png", b""))

    def test_parts(self):
        self.check("parts", ("caption", None, "text/plain", b"Wind"), ("first", counted(1), "image/png", b"\x89PNG\r\n"),
                   ("empty", None, "text/plain", b""), ("second", counted(2), "application/json", b'{"a":1}'), boundary="B-7")

    def test_single_parts_once_they_are_closed(self):
        closing = (FOLDER / "closing").read_bytes()
        self.check("text-part", ("caption", None, "text/plain", "Wind über Höhe 7\nzwei".encode()), boundary="B-7", close=closing)
        self.check("file-part", ("track", counted(1), "application/octet-stream", BYTES), boundary="B-7", close=closing)

    def test_a_damaged_body_is_noticed(self):
        body = (FOLDER / "photo-ids").read_bytes()
        whole = parts_of(body, BOUNDARY)
        for damaged in (body[:-10], body[:60], body.replace(b"\r\n\r\n[", b"\r\n["), body.replace(BOUNDARY.encode(), b"x", 1)):
            self.assertNotEqual(whole, parts_of(damaged, BOUNDARY))


if __name__ == "__main__":
    unittest.main()
