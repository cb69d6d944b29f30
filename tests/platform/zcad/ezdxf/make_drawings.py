"""Writes test drawings with ezdxf and prints what ezdxf reads back from them.

usage: make_drawings.py OUTDIR
One drawing per DXF version (R12, R2000, R2010, R2018), each with TEXT, MTEXT of
several paragraphs, a block with a visible and an invisible ATTDEF, references to
it with visible and invisible attributes, and product entities carrying extended
data of "QVKS" whose first string is an index path. Prints one JSON object:
{file: {"entities": [...], "blocks": {name: [...]}}} as ezdxf reads the files.
"""
import json
import os
import sys

import ezdxf

VERSIONS = ["R12", "R2000", "R2010", "R2018"]


def build(version, path):
    doc = ezdxf.new(version)
    if version in ("R12", "R2000"):
        doc.encoding = "gbk"  # the code page ANSI_936; later versions are UTF-8
    doc.appids.new("QVKS")
    layer = "给排水"
    doc.layers.add(layer, color=5)
    msp = doc.modelspace()
    block = doc.blocks.new("ROOMTAG", base_point=(10, 10))
    block.add_circle((10, 10), 1.0)
    block.add_text("房间", dxfattribs={"height": 2.0, "insert": (10, 10)})
    block.add_attdef("NAME", (12, 10), dxfattribs={"height": 2.5, "prompt": "名称"})
    block.add_attdef("CODE", (12, 8), text="-", dxfattribs={"height": 2.5, "flags": 1})
    msp.add_text("生活给水 WS-1", dxfattribs={"layer": layer, "height": 3.0, "insert": (5, 5)})
    if version != "R12":
        long_para = "长" * 300
        msp.add_mtext("第一段\\P第二段 second\\P" + long_para, dxfattribs={"char_height": 2.5})
    for i, (name, code) in enumerate([("卫生间", "WS-01"), ("机房", "JF-2")]):
        ref = msp.add_blockref("ROOMTAG", (100 + 20 * i, 200), dxfattribs={"layer": layer})
        ref.add_attrib("NAME", name, (102 + 20 * i, 200))
        hidden = ref.add_attrib("CODE", code, (102 + 20 * i, 198))
        hidden.dxf.flags = 1
    line = msp.add_line((0, 0), (100, 0), dxfattribs={"layer": layer, "color": 1})
    line.set_xdata("QVKS", [(1000, "3\\12"), (1070, 5)])
    if version == "R12":
        poly = msp.add_polyline2d([(0, 0), (50, 0), (50, 40)])
    else:
        poly = msp.add_lwpolyline([(0, 0), (50, 0), (50, 40)])
    poly.set_xdata("QVKS", [(1000, "6\\2")])
    msp.add_line((0, 0), (1, 1))
    doc.saveas(path)


def describe(entity):
    kind = entity.dxftype()
    item = {"type": kind, "layer": entity.dxf.layer}
    if kind in ("TEXT", "ATTDEF"):
        item["text"] = entity.dxf.text
    if kind == "MTEXT":
        item["text"] = entity.text
    if kind == "ATTDEF":
        item["tag"] = entity.dxf.tag
        item["invisible"] = bool(entity.dxf.flags & 1)
    if kind == "INSERT":
        item["block"] = entity.dxf.name
        item["attribs"] = [
            {"tag": a.dxf.tag, "text": a.dxf.text, "invisible": bool(a.dxf.flags & 1)}
            for a in entity.attribs
        ]
    if entity.has_xdata("QVKS"):
        strings = [v for code, v in entity.get_xdata("QVKS") if code == 1000]
        item["qvks"] = strings[0] if strings else ""
    return item


def main(outdir):
    report = {}
    for version in VERSIONS:
        path = os.path.join(outdir, "ezdxf-%s.dxf" % version.lower())
        build(version, path)
        doc = ezdxf.readfile(path)
        report[path] = {
            "version": doc.dxfversion,
            "entities": [describe(e) for e in doc.modelspace()],
            "blocks": {
                b.name: [describe(e) for e in b]
                for b in doc.blocks
                if not b.name.startswith("*")
            },
        }
    print(json.dumps(report, ensure_ascii=False))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
