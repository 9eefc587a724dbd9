#!/usr/bin/python3
"""Sources of the template variants that the workbook engine's tests fill as the export does.

Usage: variants.py formulas SOURCE.fods OUT.fods
       variants.py chart FORM.gnumeric OUT.gnumeric
       /usr/bin/python3 variants.py macros TEMPLATE.xls OUT.xls   (needs python3-xlrd)

formulas: the bundled template's source with what sites add to their part rows: every other part
    row shaded (formatted empty cells), a running number formula in column A (=ROW()-6, which the
    export writes over), a unit price column S and a line total T (=IF(S7="";"";H7*S7)), and a
    choice list (data validation) on the status column Q.
chart: the template as Gnumeric reads it, with a chart sheet 数量图 (a bar chart of the part rows'
    quantities) between the form and the notes sheet.
macros: the bundled template with an Excel 4.0 macro sheet 宏1 after its sheets and a VBA project
    (storage _VBA_PROJECT_CUR: a module Module1 and the workbook's and sheets' document modules,
    source only, as MS-OVBA describes them; not checked in Excel). Neither LibreOffice nor Gnumeric
    writes either, so they are added record by record and the compound file is written anew.
"""
import re
import struct
import sys

PART_ROWS = 30  # rows 7 to 36 of the source are part rows


def formulas(text):
    # Shaded copies of the part-row cell styles.
    for name in ("cePart", "cePartCenter", "cePartLeft", "cePartRight", "cePartCenterLeft"):
        style = re.search(r'<style:style style:name="%s" .*?</style:style>' % name, text).group(0)
        shaded = style.replace('style:name="%s"' % name, 'style:name="%sShaded"' % name)
        shaded = shaded.replace("<style:table-cell-properties ",
                                '<style:table-cell-properties fo:background-color="#f2f2f2" ')
        text = text.replace(style, style + "\n  " + shaded)
    # Columns S and T.
    text = text.replace(
        '<table:table-column table:style-name="coR" table:default-cell-style-name="cePartCenter"/>',
        '<table:table-column table:style-name="coR" table:default-cell-style-name="cePartCenter"/>\n'
        '    <table:table-column table:style-name="coO" table:default-cell-style-name="cePart"'
        ' table:number-columns-repeated="2"/>')
    header = '<table:table-cell table:style-name="ceHeader" office:value-type="string"><text:p>%s</text:p></table:table-cell>'
    text = text.replace((header % "修改时间") + "</table:table-row>",
                        (header % "修改时间") + (header % "单价") + (header % "金额") + "</table:table-row>")
    # The part rows.
    rows = re.findall(r'<table:table-row table:style-name="roPart"><table:table-cell .*?</table:table-row>', text)
    assert len(rows) == PART_ROWS, len(rows)
    for k, row in enumerate(rows):
        r = 7 + k
        new = row
        if k % 2 == 1:
            new = re.sub(r'table:style-name="(cePart[A-Za-z]*)"', r'table:style-name="\1Shaded"', new)
        suffix = "Shaded" if k % 2 == 1 else ""
        new = new.replace('<table:table-cell table:style-name="cePartCenter%s"/>' % suffix,
                          '<table:table-cell table:style-name="cePartCenter%s" table:formula="of:=ROW()-6"'
                          ' office:value-type="float" office:value="%d"><text:p>%d</text:p></table:table-cell>'
                          % (suffix, r - 6, r - 6), 1)
        cells = new.split("<table:table-cell ")
        # Cells 1..18 are A..R; Q (17th) gets the choice list.
        cells[17] = cells[17].replace("/>", ' table:content-validation-name="status"/>', 1)
        new = "<table:table-cell ".join(cells)
        new = new.replace("</table:table-row>",
                          '<table:table-cell table:style-name="cePart%s"/>'
                          '<table:table-cell table:style-name="cePart%s" table:formula="of:=IF([.S%d]=&quot;&quot;;'
                          '&quot;&quot;;[.H%d]*[.S%d])" office:value-type="string" office:string-value="">'
                          "<text:p/></table:table-cell></table:table-row>" % (suffix, suffix, r, r, r))
        text = text.replace(row, new, 1)
    text = text.replace('table:number-rows-repeated="1048540"><table:table-cell table:number-columns-repeated="18"/>',
                        'table:number-rows-repeated="1048540"><table:table-cell table:number-columns-repeated="20"/>')
    text = text.replace(
        "<office:spreadsheet>",
        "<office:spreadsheet>\n   <table:content-validations><table:content-validation table:name=\"status\""
        " table:condition=\"of:cell-content-is-in-list(&quot;待采购&quot;;&quot;已下单&quot;;&quot;已到货&quot;)\""
        " table:allow-empty-cell=\"true\" table:base-cell-address=\"申购表.Q7\" table:display-list=\"unsorted\"/>"
        "</table:content-validations>", 1)
    return text


CHART_SHEET = """    <gnm:Sheet gnm:Type="object" Visibility="GNM_SHEET_VISIBILITY_VISIBLE">
      <gnm:Name>数量图</gnm:Name>
      <gnm:MaxCol>-1</gnm:MaxCol>
      <gnm:MaxRow>-1</gnm:MaxRow>
      <gnm:Objects>
        <gnm:SheetObjectGraph ObjectBound="A1:A1" ObjectOffset="0 0 0 0" ObjectAnchorType="16 16 16 16" Direction="17">
          <GogObject type="GogGraph">
            <GogObject role="Chart" type="GogChart">
              <GogObject role="Plot" type="GogBarColPlot">
                <property name="horizontal">false</property>
                <GogObject role="Series" type="GogBarColSeries">
                  <data>
                    <dimension id="0" type="GnmGODataVector">申购表!$B$7:$B$36</dimension>
                    <dimension id="1" type="GnmGODataVector">申购表!$H$7:$H$36</dimension>
                  </data>
                </GogObject>
              </GogObject>
              <GogObject role="X-Axis" type="GogAxis"/>
              <GogObject role="Y-Axis" type="GogAxis"/>
            </GogObject>
          </GogObject>
        </gnm:SheetObjectGraph>
      </gnm:Objects>
    </gnm:Sheet>
"""


def chart(text):
    form = text.index("</gnm:SheetName>") + len("</gnm:SheetName>")
    text = text[:form] + '\n    <gnm:SheetName gnm:SheetType="object">数量图</gnm:SheetName>' + text[form:]
    first = text.index("</gnm:Sheet>") + len("</gnm:Sheet>\n")
    return text[:first] + CHART_SHEET + text[first:]


def record(rtype, data):
    return struct.pack("<HH", rtype, len(data)) + data


def split(stream):
    out, pos = [], 0
    while pos + 4 <= len(stream):
        rtype, size = struct.unpack_from("<HH", stream, pos)
        out.append([rtype, stream[pos + 4:pos + 4 + size]])
        pos += 4 + size
    return out


def macro_sheet_workbook(stream):
    """The Workbook stream with OBPROJ and an Excel 4.0 macro sheet 宏1 after the other sheets."""
    recs = split(stream)
    globals_end = next(i for i, r in enumerate(recs) if r[0] == 0x000A)
    # OBPROJ after CODEPAGE, DSF, EXCEL9FILE, TABID, where the format places it.
    after = max(i for i, r in enumerate(recs[:globals_end]) if r[0] in (0x0042, 0x0161, 0x01C0, 0x013D))
    recs.insert(after + 1, [0x00D3, b""])
    globals_end += 1
    for r in recs[:globals_end]:
        if r[0] == 0x013D:  # TABID: one id per sheet
            ids = struct.unpack("<%dH" % (len(r[1]) // 2), r[1])
            r[1] += struct.pack("<H", max(ids) + 1)
    name = "宏1".encode("utf-16-le")
    last_sheet = max(i for i, r in enumerate(recs[:globals_end]) if r[0] == 0x0085)
    recs.insert(last_sheet + 1, [0x0085, struct.pack("<IBBBB", 0, 0, 1, len(name) // 2, 1) + name])
    globals_end += 1
    # The macro sheet: =2+3 in A1, =RETURN() in A2.
    def formula(row, tokens):
        return struct.pack("<HHH", row, 0, 15) + bytes(8) + struct.pack("<HIH", 0x0002, 0, len(tokens)) + tokens
    recs += [[0x0809, struct.pack("<HHHHII", 0x0600, 0x0040, 0x0DBB, 0x07CC, 0, 6)],
             [0x0200, struct.pack("<IIHHH", 0, 2, 0, 1, 0)],
             [0x0006, formula(0, bytes([0x1E, 2, 0, 0x1E, 3, 0, 0x03]))],
             [0x0006, formula(1, bytes([0x42, 0]) + struct.pack("<H", 55))],
             [0x023E, struct.pack("<HHHHHHHHI", 0x06B6, 0, 0, 64, 0, 0, 0, 0, 0)],
             [0x000A, b""]]
    # Lay out, then set each sheet's position and move EXTSST's positions with the SST.
    positions, out = [], b""
    for r in recs:
        positions.append(len(out))
        out += record(r[0], r[1])
    out = bytearray(out)
    sheets = [i for i, r in enumerate(recs[:globals_end]) if r[0] == 0x0085]
    top, depth = [], 0  # positions of the sheets' BOFs, embedded charts' BOFs left out
    for i in range(globals_end + 1, len(recs)):
        if recs[i][0] == 0x0809:
            if depth == 0:
                top.append(positions[i])
            depth += 1
        elif recs[i][0] == 0x000A:
            depth -= 1
    for k, i in enumerate(sheets):
        struct.pack_into("<I", out, positions[i] + 4, top[k])
    # Every record inserted or grown lies before the SST.
    old_sst = next(i for i, r in enumerate(split(stream)) if r[0] == 0x00FC)
    shift = positions[next(i for i, r in enumerate(recs) if r[0] == 0x00FC)] - sum(
        4 + len(r[1]) for r in split(stream)[:old_sst])
    for i, r in enumerate(recs[:globals_end]):
        if r[0] == 0x00FF:
            for at in range(2, len(r[1]) - 7, 8):
                old = struct.unpack_from("<I", r[1], at)[0]
                struct.pack_into("<I", out, positions[i] + 4 + at, old + shift)
    return bytes(out)


def ovba_compress(data):
    """MS-OVBA compression using literal tokens only (a flag byte of 0 before each 8 bytes)."""
    out = bytearray(b"\x01")
    for start in range(0, len(data), 4096):
        chunk = data[start:start + 4096]
        body = bytearray()
        for k in range(0, len(chunk), 8):
            body += b"\x00" + chunk[k:k + 8]
        out += struct.pack("<H", 0xB000 | (len(body) + 2 - 3)) + body
    return bytes(out)


def vba_project():
    """Streams of a VBA project storage, by path below _VBA_PROJECT_CUR."""
    modules = [("ThisWorkbook", 2, 'Attribute VB_Name = "ThisWorkbook"\r\n'),
               ("Sheet1", 2, 'Attribute VB_Name = "Sheet1"\r\n'),
               ("Module1", 1, 'Attribute VB_Name = "Module1"\r\n'
                              "Sub ClearParts()\r\n"
                              '    Worksheets(1).Range("A7:R2000").ClearContents\r\n'
                              "End Sub\r\n")]

    def rec(rid, data):
        return struct.pack("<HI", rid, len(data)) + data

    name = b"VBAProject"
    d = (rec(0x01, struct.pack("<I", 1)) + rec(0x02, struct.pack("<I", 0x0804)) + rec(0x14, struct.pack("<I", 0x0804))
         + rec(0x03, struct.pack("<H", 936)) + rec(0x04, name)
         + rec(0x05, b"") + struct.pack("<HI", 0x40, 0)
         + rec(0x06, b"") + struct.pack("<HI", 0x3D, 0)
         + rec(0x07, struct.pack("<I", 0)) + rec(0x08, struct.pack("<I", 0))
         + struct.pack("<HIIH", 0x09, 4, 1, 0)
         + rec(0x0C, b"") + struct.pack("<HI", 0x3C, 0)
         + rec(0x0F, struct.pack("<H", len(modules))) + rec(0x13, struct.pack("<H", 0xFFFF)))
    for module, kind, _ in modules:
        m = module.encode("ascii")
        d += (rec(0x19, m) + rec(0x47, module.encode("utf-16-le")) + rec(0x1A, m) + struct.pack("<HI", 0x32, len(m) * 2)
              + module.encode("utf-16-le") + rec(0x1C, b"") + struct.pack("<HI", 0x48, 0)
              + rec(0x31, struct.pack("<I", 0)) + rec(0x1E, struct.pack("<I", 0)) + rec(0x2C, struct.pack("<H", 0xFFFF))
              + struct.pack("<HI", 0x21 if kind == 1 else 0x22, 0) + struct.pack("<HI", 0x2B, 0))
    d += struct.pack("<HI", 0x10, 0)
    project = ('ID="{5A6F3C21-0D4B-4E8A-9C17-3B2E6D8F1A40}"\r\n'
               "Document=ThisWorkbook/&H00000000\r\nDocument=Sheet1/&H00000000\r\nModule=Module1\r\n"
               'Name="VBAProject"\r\nHelpContextID="0"\r\nVersionCompatible32="393222000"\r\n'
               'CMG="0000"\r\nDPB="0000"\r\nGC="0000"\r\n\r\n[Host Extender Info]\r\n'
               "&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000\r\n\r\n[Workspace]\r\n"
               "ThisWorkbook=0, 0, 0, 0, C\r\nSheet1=0, 0, 0, 0, C\r\nModule1=0, 0, 0, 0, C\r\n")
    streams = {"PROJECT": project.encode("ascii"),
               "PROJECTwm": b"".join(m.encode("ascii") + b"\x00" + m.encode("utf-16-le") + b"\x00\x00"
                                     for m, _, _ in modules) + b"\x00\x00",
               "VBA/_VBA_PROJECT": bytes([0xCC, 0x61, 0xFF, 0xFF, 0x00, 0x00, 0x00]),
               "VBA/dir": ovba_compress(d)}
    for module, _, source in modules:
        streams["VBA/" + module] = ovba_compress(source.encode("ascii"))
    return streams


def cfb_order(name):
    return (len(name), name.upper())


def compound_file(streams):
    """A version 3 compound file holding streams, by path ("A/B/c": storages A and A/B)."""
    entries = [{"name": "Root Entry", "type": 5, "children": [], "data": b""}]
    index = {"": 0}
    for path in streams:
        parts = path.split("/")
        for depth in range(1, len(parts) + 1):
            key = "/".join(parts[:depth])
            if key in index:
                continue
            index[key] = len(entries)
            stream = depth == len(parts)
            entries.append({"name": parts[depth - 1], "type": 2 if stream else 1, "children": [],
                            "data": streams[key] if stream else b""})
            entries[index["/".join(parts[:depth - 1])]]["children"].append(index[key])
    sector = 512
    big = [e for e in entries if e["type"] == 2 and len(e["data"]) >= 4096]
    small = [e for e in entries if e["type"] == 2 and len(e["data"]) < 4096]
    body, fat = bytearray(), []

    def chain(data):
        first = len(fat)
        count = (len(data) + sector - 1) // sector
        for k in range(count):
            fat.append(first + k + 1 if k + 1 < count else 0xFFFFFFFE)
        body.extend(data + bytes(count * sector - len(data)))
        return first if count else 0xFFFFFFFE

    for e in big:
        e["start"] = chain(e["data"])
    mini, minifat = bytearray(), []
    for e in small:
        count = (len(e["data"]) + 63) // 64
        e["start"] = len(minifat) if count else 0xFFFFFFFE
        for k in range(count):
            minifat.append(len(minifat) + 1 if k + 1 < count else 0xFFFFFFFE)
        mini += e["data"] + bytes(count * 64 - len(e["data"]))
    entries[0]["start"] = chain(bytes(mini)) if mini else 0xFFFFFFFE
    entries[0]["size"] = len(mini)
    minifat_bytes = b"".join(struct.pack("<I", v) for v in minifat)
    minifat_start = chain(minifat_bytes + b"\xff" * (-len(minifat_bytes) % sector)) if minifat else 0xFFFFFFFE
    # Directory: each storage's children as a chain of right siblings in name order, all black.
    for e in entries:
        e["left"] = e["right"] = e["child"] = 0xFFFFFFFF
    for e in entries:
        kids = sorted(e["children"], key=lambda i: cfb_order(entries[i]["name"]))
        if kids:
            e["child"] = kids[0]
            for a, b in zip(kids, kids[1:]):
                entries[a]["right"] = b
    directory = bytearray()
    for e in entries:
        name = e["name"].encode("utf-16-le") + b"\x00\x00"
        size = e.get("size", len(e["data"]))
        start = e.get("start", 0xFFFFFFFE if e["type"] == 2 else 0)
        directory += (name + bytes(64 - len(name)) + struct.pack("<HBB", len(name), e["type"], 1)
                      + struct.pack("<III", e["left"], e["right"], e["child"]) + bytes(16 + 4 + 16)
                      + struct.pack("<IQ", start, size))
    directory += (b"\x00" * 64 + struct.pack("<HBB", 0, 0, 0) + b"\xff" * 12 + bytes(48)) * (-len(entries) % 4)
    directory_start = chain(bytes(directory))
    fat_sectors = 1
    while (len(fat) + fat_sectors) > fat_sectors * 128:
        fat_sectors += 1
    assert fat_sectors <= 109
    fat_start = len(fat)
    fat += [0xFFFFFFFD] * fat_sectors
    fat += [0xFFFFFFFF] * (fat_sectors * 128 - len(fat))
    body += b"".join(struct.pack("<I", v) for v in fat)
    header = (b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(16) + struct.pack("<HHHHH", 0x3E, 3, 0xFFFE, 9, 6)
              + bytes(6) + struct.pack("<IIIIIIIII", 0, fat_sectors, directory_start, 0, 4096, minifat_start,
                                       len(minifat_bytes) // sector + (1 if len(minifat_bytes) % sector else 0),
                                       0xFFFFFFFE, 0)
              + b"".join(struct.pack("<I", fat_start + k) for k in range(fat_sectors))
              + b"\xff" * 4 * (109 - fat_sectors))
    return header + bytes(body)


def macros(source, target):
    import xlrd.compdoc
    with open(source, "rb") as f:
        doc = xlrd.compdoc.CompDoc(f.read(), logfile=sys.stderr)
    streams = {}
    for entry in doc.dirlist[1:]:
        if entry.etype == 2 and entry.parent == 0:
            streams[entry.name] = doc.get_named_stream(entry.name)
    streams["Workbook"] = macro_sheet_workbook(streams["Workbook"])
    for path, data in vba_project().items():
        streams["_VBA_PROJECT_CUR/" + path] = data
    with open(target, "wb") as f:
        f.write(compound_file(streams))


if __name__ == "__main__":
    kind, source, target = sys.argv[1:4]
    if kind == "macros":
        macros(source, target)
        sys.exit(0)
    with open(source, encoding="utf-8") as f:
        text = f.read()
    with open(target, "w", encoding="utf-8") as f:
        f.write({"formulas": formulas, "chart": chart}[kind](text))
