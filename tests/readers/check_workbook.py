#!/usr/bin/python3
"""Checks what readers of workbooks pass over: the order of records, the totals, the places that one
record tells of another.

    check_workbook.py FILE...

Prints each fault to standard error; the exit status is 1 when there is any.
"""

import math
import os
import struct
import sys

from xlrd.compdoc import CompDoc

BOF, EOF, CONTINUE = 0x0809, 0x000A, 0x003C
FONT, FORMAT, XF, STYLE, BOUNDSHEET, SST, EXTSST = 0x31, 0x41E, 0xE0, 0x293, 0x85, 0xFC, 0xFF
INDEX, DIMENSIONS, ROW, NUMBER, LABELSST, RK = 0x20B, 0x200, 0x208, 0x203, 0xFD, 0x27E
DBCELL, WINDOW2, DEFCOLWIDTH, COLINFO = 0xD7, 0x23E, 0x55, 0x7D
LARGEST = 8224
KNOWN_FORMATS = set(range(0, 23)) | set(range(37, 50))
CELLS = (NUMBER, LABELSST, RK)


class Fault(Exception):
    pass


def require(holds, words):
    if not holds:
        raise Fault(words)


def split(stream):
    """The records: (position, type, content)."""
    records = []
    at = 0
    while at + 4 <= len(stream):
        kind, length = struct.unpack_from("<HH", stream, at)
        require(length <= LARGEST, "a record of %d bytes at %d" % (length, at))
        require(at + 4 + length <= len(stream), "a record beyond the end at %d" % at)
        records.append((at, kind, stream[at + 4 : at + 4 + length]))
        at += 4 + length
        if kind == EOF and (at == len(stream) or not any(stream[at : at + 4])):
            break  # a container may fill up with zeros
    require(not any(stream[at:]), "something behind the last record")
    return records


def text_at(content, at, width):
    """A text in one record, with its length in so many bytes."""
    count = int.from_bytes(content[at : at + width], "little")
    wide = content[at + width]
    require(wide in (0, 1), "a text with the flags %d" % wide)
    begin = at + width + 1
    end = begin + count * (2 if wide else 1)
    require(end == len(content), "a text that does not end with its record")
    return content[begin:end].decode("utf-16-le" if wide else "latin-1")


def check_texts(records, first):
    """Reads the table at records[first]; its number of texts and of cells."""
    pieces = [records[first]]
    while records[first + len(pieces)][1] == CONTINUE:
        pieces.append(records[first + len(pieces)])
    cell_count, text_count = struct.unpack_from("<II", pieces[0][2])
    piece, at = 0, 8
    texts, starts = [], []
    for _ in range(text_count):
        if at == len(pieces[piece][2]):
            piece, at = piece + 1, 0
        position, _, content = pieces[piece]
        require(at + 3 <= len(content), "the head of a text is cut")
        starts.append((position + 4 + at, 4 + at))
        count, wide = struct.unpack_from("<HB", content, at)
        require(wide in (0, 1), "a text with the flags %d" % wide)
        at += 3
        text = ""
        while True:
            size = 2 if wide else 1
            taken = min(count - len(text.encode("utf-16-le")) // 2, (len(content) - at) // size)
            part = content[at : at + taken * size]
            text += part.decode("utf-16-le" if wide else "latin-1")
            at += taken * size
            if len(text.encode("utf-16-le")) // 2 == count:
                break
            require(len(content) - at < 4, "a text is cut before its record is full")
            piece, at = piece + 1, 0
            content = pieces[piece][2]
            require(content[0] == wide, "a text changes its width")
            at = 1
        require(wide or not text or max(text) <= "\xff", "a wide text written narrow")
        require(not wide or max(text) > "\xff", "a narrow text written wide")
        texts.append(text)
    require(piece == len(pieces) - 1 and at == len(pieces[piece][2]), "texts are left over")
    require(len(set(texts)) == len(texts), "a text stands twice in the table")
    require(all(texts), "an empty text in the table")

    position, kind, content = records[first + len(pieces)]
    require(kind == EXTSST, "no index behind the texts")
    (step,) = struct.unpack_from("<H", content)
    require(step >= 8, "an index of texts with the step %d" % step)
    entries = [struct.unpack_from("<IHH", content, at) for at in range(2, len(content), 8)]
    require([entry[:2] for entry in entries] == starts[::step], "the index of texts is wrong")
    return text_count, cell_count


def check_globals(records):
    """Up to the first EOF; the number of styles, the counts of check_texts, the sheets."""
    order = [FONT, FORMAT, XF, STYLE, BOUNDSHEET, SST, EXTSST]
    kinds = [kind for _, kind, _ in records]
    require(records[0][2][:4] == b"\x00\x06\x05\x00", "no BIFF8 book")
    shown = [order.index(kind) for kind in kinds if kind in order]
    require(shown == sorted(shown), "the records of the book are not in order")
    for kind, count in ((0x42, 1), (0x22, 1), (0x3D, 1), (SST, 1), (EXTSST, 1)):
        require(kinds.count(kind) == count, "record %#x is there %d times" % (kind, kinds.count(kind)))
    require(kinds.count(FONT) >= 4, "less than four fonts")
    require(records[kinds.index(0x42)][2] == b"\xb0\x04", "not UTF-16")
    require(records[kinds.index(0x22)][2] == b"\0\0", "days are not counted from 1900")
    for content in (content for _, kind, content in records if kind == FONT):
        require(content[:2] == b"\xc8\x00", "a font that is not of 10 points")
        require(text_at(content, 14, 1) == "Arial", "a font that is not Arial")

    formats = set(KNOWN_FORMATS)
    for content in (content for _, kind, content in records if kind == FORMAT):
        (number,) = struct.unpack_from("<H", content)
        require(number >= 164 and number not in formats, "the format %d is there already" % number)
        require(text_at(content, 2, 2) != "", "an empty format")
        formats.add(number)
    styles = [content for _, kind, content in records if kind == XF]
    require(len(styles) >= 16, "%d styles" % len(styles))
    for number, content in enumerate(styles):
        font, number_format, flags = struct.unpack_from("<HHH", content)
        require(font in range(4), "a style with the font %d" % font)
        require(number_format in formats, "a style with the format %d" % number_format)
        require(bool(flags & 4) == (number < 15), "style %d is of the wrong kind" % number)

    sheets = []
    for content in (content for _, kind, content in records if kind == BOUNDSHEET):
        position, hidden = struct.unpack_from("<IH", content)
        title = text_at(content, 6, 1)
        require(hidden == 0, "a hidden sheet")
        require(0 < len(title) <= 31 and not set(title) & set("[]:*?/\\"), "the name " + title)
        sheets.append((position, title))
    require(len({title.lower() for _, title in sheets}) == len(sheets), "two sheets of one name")
    require(len(sheets) > 0, "no sheet")
    return len(styles), check_texts(records, kinds.index(SST)), sheets


def number_of(kind, content):
    if kind == NUMBER:
        return struct.unpack_from("<d", content, 6)[0]
    (bits,) = struct.unpack_from("<I", content, 6)
    if bits & 2:
        number = float(struct.unpack_from("<i", content, 6)[0] >> 2)
    else:
        (number,) = struct.unpack("<d", struct.pack("<II", 0, bits & ~3))
    return number / 100 if bits & 1 else number


def check_sheet(records, style_count, text_count):
    """The number of cells with texts, and whether the sheet is the open one."""
    kinds = [kind for _, kind, _ in records]
    require(records[0][2][:4] == b"\x00\x06\x10\x00", "no sheet where one should be")
    require(kinds[1] == INDEX, "no index at the begin of a sheet")
    for kind in (INDEX, DIMENSIONS, DEFCOLWIDTH, WINDOW2):
        require(kinds.count(kind) == 1, "record %#x is there %d times" % (kind, kinds.count(kind)))
    require(max([0] + [at for at, kind in enumerate(kinds) if kind == COLINFO])
            < kinds.index(DIMENSIONS), "column widths behind the dimensions")
    _, first_row, rows_end, widths = struct.unpack_from("<IIII", records[1][2])
    blocks = struct.unpack_from("<%dI" % ((len(records[1][2]) - 16) // 4), records[1][2], 16)
    require(widths == records[kinds.index(DEFCOLWIDTH)][0], "the index misses the column widths")

    dimensions = struct.unpack_from("<IIHH", records[kinds.index(DIMENSIONS)][2])
    require(dimensions[:2] == (first_row, rows_end), "index and dimensions tell other rows")
    require(rows_end <= 65536 and dimensions[3] <= 256, "a sheet too large")
    require(tuple(at for at, kind, _ in records if kind == DBCELL) == blocks, "the index misses a block")
    require(len(blocks) == (rows_end - first_row + 31) // 32, "%d blocks" % len(blocks))

    table = [at for at, kind in enumerate(kinds) if kind in CELLS + (ROW, DBCELL)]
    require(not table or (table[0] > kinds.index(DIMENSIONS) and table[-1] < kinds.index(WINDOW2)),
            "cells at the wrong place")
    rows, ends, cells, text_cells = {}, {}, {}, 0
    columns = set()
    before = (-1, -1)
    next_row = first_row
    for position, kind, content in records:
        if kind == ROW:
            row, begin, end = struct.unpack_from("<HHH", content)
            require(not cells, "a row between cells")
            require(row == next_row, "row %d where %d should be" % (row, next_row))
            next_row += 1
            rows[row] = (position, begin, end)
        elif kind in CELLS:
            row, column, style = struct.unpack_from("<HHH", content)
            require((row, column) > before, "row %d, column %d out of order" % (row, column))
            before = (row, column)
            require(row in rows, "a cell of a row that its block has not")
            require(15 <= style < style_count, "a cell with the style %d" % style)
            cells.setdefault(row, []).append((position, column))
            columns.add(column)
            ends[row] = position + 4 + len(content)
            if kind == LABELSST:
                text_cells += 1
                require(struct.unpack_from("<I", content, 6)[0] < text_count, "a text that is not there")
            else:
                number = number_of(kind, content)
                require(math.isfinite(number), "a number that is not finite")
                require(number != 0 or math.copysign(1, number) > 0, "a minus before a zero")
        elif kind == DBCELL:
            numbers = sorted(rows)
            require(len(numbers) <= 32, "a block of %d rows" % len(numbers))
            (back,) = struct.unpack_from("<I", content)
            require(position - back == rows[numbers[0]][0], "a block misses its first row")
            offsets = struct.unpack_from("<%dH" % ((len(content) - 4) // 2), content, 4)
            require(len(offsets) == len(numbers), "a block tells of %d rows" % len(offsets))
            place = rows[numbers[0]][0] + 20
            behind = rows[numbers[-1]][0] + 20
            for row, offset in zip(numbers, offsets):
                place += offset
                found = cells.get(row, [])
                require(place == (found[0][0] if found else behind), "a block misses row %d" % row)
                span = (found[0][1], found[-1][1] + 1) if found else (0, 0)
                require(rows[row][1:] == span, "row %d tells other columns" % row)
                behind = ends.get(row, behind)
            rows, ends, cells = {}, {}, {}
    require(not rows, "rows without a block")
    require(next_row == rows_end, "rows are missing")
    if columns:
        require((min(columns), max(columns) + 1) == dimensions[2:], "the dimensions tell other columns")
    (view,) = struct.unpack_from("<H", records[kinds.index(WINDOW2)][2])
    return text_cells, bool(view & 0x600)


def check(path):
    with open(path, "rb") as file:
        content = file.read()
    require(len(content) % 512 == 0, "%d bytes are no whole sectors" % len(content))
    stream = CompDoc(content, logfile=sys.stderr).get_named_stream("Workbook")
    require(stream, "no stream Workbook")
    records = split(bytes(stream))
    parts, begin = [], 0
    for at, (_, kind, _) in enumerate(records):
        if kind == EOF:
            parts.append(records[begin : at + 1])
            begin = at + 1
    require(begin == len(records), "records behind the last part")
    require(all(part[0][1] == BOF for part in parts), "a part without its begin")

    style_count, (text_count, cell_count), sheets = check_globals(parts[0])
    require([part[0][0] for part in parts[1:]] == [position for position, _ in sheets],
            "sheets are not where the book says")
    results = [check_sheet(part, style_count, text_count) for part in parts[1:]]
    require(sum(count for count, _ in results) == cell_count, "the total of texts is wrong")
    require([is_open for _, is_open in results] == [True] + [False] * (len(results) - 1),
            "another sheet than the first is open")


if __name__ == "__main__":
    status = 0
    for each in sys.argv[1:]:
        try:
            check(each)
        except Fault as fault:
            print("%s: %s" % (os.path.basename(each), fault), file=sys.stderr)
            status = 1
    sys.exit(status)
