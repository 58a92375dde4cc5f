#!/usr/bin/python3
"""Reads workbooks with a spreadsheet program or library that others wrote, and prints every cell.

    read_workbook.py xlrd|libreoffice|gnumeric FILE...

For each file a line "file NAME" and one for each cell that is not empty, its parts separated by
tabs: sheet, row and column (from 1), "number" or "text", the value (numbers with 17 digits, with 15
from LibreOffice, which tells no more; texts with their tabs, line ends and backslashes escaped), the
code of the number format. Dates and times are the numbers that they are in the file.

Whatever the reader complains of goes to standard error and makes the exit status 1.
"""

import datetime
import io
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

complaints = []


def complain(path, words):
    complaints.append("%s: %s" % (os.path.basename(path), words.strip()))


def show(sheet, row, column, value, code, digits=17):
    if isinstance(value, str):
        kind = "text"
        for plain, escaped in (("\\", "\\\\"), ("\t", "\\t"), ("\n", "\\n"), ("\r", "\\r")):
            value = value.replace(plain, escaped)
    else:
        kind = "number"
        value = "%.*g" % (digits, value)
    print(sheet, row + 1, column + 1, kind, value, code, sep="\t")


def show_file(path):
    print("file " + os.path.basename(path))


# --- xlrd ------------------------------------------------------------------------------------------

# What it says of a file that is as it should be.
XLRD_SAYS = re.compile(
    r"CODEPAGE: codepage 1200 -> encoding 'utf_16_le'|DATEMODE: datemode 0|Countries: \(1, 1\)|"
    r"Colour indexes used:|\[0, 64, 65\]|"
)
# Formats that follow the user's settings; each reader names them in its own way.
XLRD_NAMES = {"m/d/yy": "m/d/yyyy", "m/d/yy h:mm": "m/d/yyyy h:mm"}


def read_with_xlrd(paths):
    import xlrd

    for path in paths:
        log = io.StringIO()
        book = xlrd.open_workbook(path, logfile=log, verbosity=1, formatting_info=True)
        for line in log.getvalue().splitlines():
            if not XLRD_SAYS.fullmatch(line):
                complain(path, line)
        if book.font_list[book.xf_list[15].font_index].name != "Arial":
            complain(path, "the font is not Arial")
        show_file(path)
        for sheet in book.sheets():
            for row in range(sheet.nrows):
                values = sheet.row_values(row)
                for column, kind in enumerate(sheet.row_types(row)):
                    if kind in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                        continue
                    if kind not in (xlrd.XL_CELL_TEXT, xlrd.XL_CELL_NUMBER, xlrd.XL_CELL_DATE):
                        complain(path, "a cell of the type %d" % kind)
                    xf = book.xf_list[sheet.cell_xf_index(row, column)]
                    code = book.format_map[xf.format_key].format_str
                    show(sheet.name, row, column, values[column], XLRD_NAMES.get(code, code))


# --- LibreOffice -----------------------------------------------------------------------------------

SPACES = {
    "office": "urn:oasis:names:tc:opendocument:xmlns:office:1.0",
    "table": "urn:oasis:names:tc:opendocument:xmlns:table:1.0",
    "text": "urn:oasis:names:tc:opendocument:xmlns:text:1.0",
    "style": "urn:oasis:names:tc:opendocument:xmlns:style:1.0",
    "number": "urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0",
}
DAY_ZERO = datetime.datetime(1899, 12, 30)


def name(short):
    space, local = short.split(":")
    return "{%s}%s" % (SPACES[space], local)


def odf_date_part(part):
    """A part of a date or time style as a number format's code has it."""
    kind = part.tag.split("}")[1]
    long = part.get(name("number:style")) == "long"
    if kind == "text":
        return part.text or ""
    if kind == "month":
        textual = part.get(name("number:textual")) == "true"
        return ("mmmm" if long else "mmm") if textual else ("mm" if long else "m")
    return {
        "day": "dd" if long else "d",
        "day-of-week": "dddd" if long else "ddd",
        "year": "yyyy" if long else "yy",
        "hours": "hh" if long else "h",
        "minutes": "mm" if long else "m",
        "seconds": "ss" if long else "s",
        "am-pm": "AM/PM",
    }.get(kind, "?" + kind)


def odf_code(style):
    """The code of a data style."""
    kind = style.tag.split("}")[1]
    if kind in ("date-style", "time-style"):
        return "".join(odf_date_part(part) for part in style)
    code = ""
    for part in style:
        part_kind = part.tag.split("}")[1]
        decimals = int(part.get(name("number:decimal-places"), "-1"))
        if part_kind == "number" and decimals < 0:
            code += "General"
        elif part_kind in ("number", "scientific-number"):
            grouping = part.get(name("number:grouping")) == "true"
            code += ("#,##0" if grouping else "0") + ("." + "0" * decimals if decimals else "")
            if part_kind == "scientific-number":
                code += "E+" + "0" * int(part.get(name("number:min-exponent-digits")))
        elif part_kind == "text":
            code += part.text or ""
        else:
            code += "?" + part_kind
    return code


def odf_text(paragraph):
    text = paragraph.text or ""
    for part in paragraph:
        kind = part.tag.split("}")[1]
        if kind == "s":
            text += " " * int(part.get(name("text:c"), "1"))
        elif kind == "tab":
            text += "\t"
        elif kind == "line-break":
            text += "\n"
        else:
            text += odf_text(part)
        text += part.tail or ""
    return text


def odf_value(cell):
    kind = cell.get(name("office:value-type"))
    if kind in ("float", "percentage", "currency"):
        return float(cell.get(name("office:value")))
    if kind == "date":
        moment = datetime.datetime.fromisoformat(cell.get(name("office:date-value")))
        return (moment - DAY_ZERO) / datetime.timedelta(days=1)
    if kind == "time":
        parts = re.fullmatch(r"PT(\d+)H(\d+)M(\d+)S", cell.get(name("office:time-value")))
        hours, minutes, seconds = (int(part) for part in parts.groups())
        return (hours * 3600 + minutes * 60 + seconds) / 86400
    if kind == "string":
        paragraphs = cell.findall(name("text:p"))
        return "\n".join(odf_text(paragraph) for paragraph in paragraphs)
    return None


def show_fods(path):
    root = ElementTree.parse(path).getroot()
    codes = {}
    styles = {}
    for style in root.iter():
        if style.get(name("style:name")) is None:
            continue
        if style.tag == name("style:style"):
            styles[style.get(name("style:name"))] = style
        elif style.tag.startswith("{%s}" % SPACES["number"]):
            codes[style.get(name("style:name"))] = odf_code(style)

    def code_of(style_name):
        while style_name in styles:
            style = styles[style_name]
            if style.get(name("style:data-style-name")):
                return codes[style.get(name("style:data-style-name"))]
            style_name = style.get(name("style:parent-style-name"))
        return "General"

    for table in root.iter(name("table:table")):
        sheet = table.get(name("table:name"))
        column_styles = []
        for column in table.iter(name("table:table-column")):
            repeated = int(column.get(name("table:number-columns-repeated"), "1"))
            default = column.get(name("table:default-cell-style-name"))
            column_styles += [default] * min(repeated, 256 - len(column_styles))
        at_row = 0
        for row in table.iter(name("table:table-row")):
            cells = []
            at_column = 0
            for cell in row:
                columns = int(cell.get(name("table:number-columns-repeated"), "1"))
                value = odf_value(cell)
                for column in range(at_column, at_column + columns) if value is not None else ():
                    style = cell.get(name("table:style-name")) or column_styles[column]
                    cells.append((column, value, code_of(style)))
                at_column += columns
            rows = int(row.get(name("table:number-rows-repeated"), "1"))
            for repeated in range(at_row, at_row + rows) if cells else ():
                for column, value, code in cells:
                    show(sheet, repeated, column, value, code, digits=15)
            at_row += rows


def read_with_libreoffice(paths):
    """All files in one call, since each start takes seconds; a profile of its own, that is gone
    afterwards."""
    with tempfile.TemporaryDirectory() as folder:
        environment = dict(os.environ, HOME=folder, LC_ALL="C.UTF-8")
        run = subprocess.run(
            ["soffice", "-env:UserInstallation=file://" + folder + "/profile", "--headless",
             "--norestore", "--convert-to", "fods", "--outdir", folder] + paths,
            env=environment, capture_output=True, text=True, timeout=240)
        for path in paths:
            base = os.path.splitext(os.path.basename(path))[0]
            converted = os.path.join(folder, base + ".fods")
            if not os.path.exists(converted):
                complain(path, "is not read: " + run.stdout + run.stderr)
                continue
            show_file(path)
            show_fods(converted)


# --- Gnumeric --------------------------------------------------------------------------------------

GNUMERIC = "{http://www.gnumeric.org/v10.dtd}"
GNUMERIC_NAMES = {
    "[$-f8f2]m/d/yy": "m/d/yyyy",
    "[$-f8f2]m/d/yy h:mm": "m/d/yyyy h:mm",
    "[$-f8f1]d-mmm-yy": "d-mmm-yy",
}


def read_with_gnumeric(paths):
    with tempfile.TemporaryDirectory() as folder:
        environment = dict(os.environ, HOME=folder, LC_ALL="C.UTF-8")
        for path in paths:
            converted = os.path.join(folder, "book.xml")
            run = subprocess.run(
                ["ssconvert", "--export-type=Gnumeric_XmlIO:sax:0", path, converted],
                env=environment, capture_output=True, text=True)
            if run.returncode != 0 or run.stderr:
                complain(path, run.stderr or "is not read")
                continue
            show_file(path)
            show_gnumeric(converted)
            os.remove(converted)


def show_gnumeric(path):
    for sheet in ElementTree.parse(path).getroot().iter(GNUMERIC + "Sheet"):
        formats = []  # by regions; an area that none has is General
        for region in sheet.iter(GNUMERIC + "StyleRegion"):
            code = region.find(GNUMERIC + "Style").get("Format")
            if code != "General":
                area = [int(region.get(edge)) for edge in ("startRow", "endRow", "startCol", "endCol")]
                formats.append((area, GNUMERIC_NAMES.get(code, code)))

        def code_of(row, column):
            for (first_row, last_row, first_column, last_column), code in formats:
                if first_row <= row <= last_row and first_column <= column <= last_column:
                    return code
            return "General"

        cells = []
        for cell in sheet.iter(GNUMERIC + "Cell"):
            row, column = int(cell.get("Row")), int(cell.get("Col"))
            is_text = cell.get("ValueType") == "60"
            cells.append((row, column, (cell.text or "") if is_text else float(cell.text)))
        for row, column, value in sorted(cells, key=lambda each: each[:2]):
            show(sheet.find(GNUMERIC + "Name").text, row, column, value, code_of(row, column))


READERS = {
    "xlrd": read_with_xlrd,
    "libreoffice": read_with_libreoffice,
    "gnumeric": read_with_gnumeric,
}

if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stderr.reconfigure(encoding="utf-8")
    READERS[sys.argv[1]](sys.argv[2:])
    for complaint in complaints:
        print(complaint, file=sys.stderr)
    sys.exit(1 if complaints else 0)
