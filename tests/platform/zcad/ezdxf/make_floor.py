"""Writes a floor drawing as another CAD program would, with ezdxf.

usage: make_floor.py OUT.dxf [VERSION]
Layers with colours and states, lines, arcs, circles, bulged polylines, texts,
multi-line text, a block with attribute definitions and references to it with
attributes, extended data of another application, and kinds this host has no
class for (an ellipse, a spline); and what mirroring, line types and text
styles leave in a drawing: extrusion (0,0,-1), a line type with its own scale and
the drawing's, width factor, slant, a turned multi-line text, a grid of copies
and a wide polyline. The lines from x 0 to 9000 at y 1000 to 3000
are the pipes a drafter gives system codes to.
"""
import sys

import ezdxf


def build(path, version="R2018"):
    doc = ezdxf.new(version)
    doc.appids.new("OTHERAPP")
    doc.layers.add("墙体", color=8)
    doc.layers.add("管线", color=3)
    hidden = doc.layers.add("隐藏", color=5)
    hidden.off()
    msp = doc.modelspace()
    block = doc.blocks.new("房间标签", base_point=(0, 0))
    block.add_circle((0, 0), 150)
    block.add_attdef("房间号", (0, -300), dxfattribs={"height": 250, "prompt": "房间号"})
    block.add_attdef("面积", (0, -600), text="-", dxfattribs={"height": 250, "flags": 1})
    for x in (0, 12000):
        msp.add_lwpolyline([(x, 0), (x + 12000, 0), (x + 12000, 8000), (x, 8000)], close=True,
                           dxfattribs={"layer": "墙体"})
    msp.add_lwpolyline([(0, 4000), (3000, 4000, 0.5), (6000, 4000)], dxfattribs={"layer": "墙体"})
    for i, y in enumerate((1000, 2000, 3000)):
        msp.add_line((0, y), (9000, y), dxfattribs={"layer": "管线"})
    msp.add_arc((9000, 2000), 1000, -90, 90, dxfattribs={"layer": "管线"})
    msp.add_lwpolyline([(10000, 1000), (10000, 3000), (11000, 3500)], dxfattribs={"layer": "管线"})
    msp.add_circle((20000, 4000), 500, dxfattribs={"layer": "隐藏", "color": 1})
    msp.add_text("办公室", dxfattribs={"height": 350, "insert": (1000, 6000), "rotation": 15})
    msp.add_mtext("一层平面\\P给排水", dxfattribs={"char_height": 300, "insert": (14000, 7000)})
    ref = msp.add_blockref("房间标签", (3000, 6000), dxfattribs={"xscale": 2, "yscale": 2, "rotation": 30})
    ref.add_attrib("房间号", "1F-101", (3000, 5700))
    area = ref.add_attrib("面积", "30㎡", (3000, 5400))
    area.dxf.flags = 1
    tagged = msp.add_line((0, 7000), (2000, 7000), dxfattribs={"true_color": 0x336699})
    tagged.set_xdata("OTHERAPP", [(1000, "kept"), (1070, 3), (1040, 2.5)])
    msp.add_ellipse((16000, 2000), major_axis=(1500, 0), ratio=0.5)
    msp.add_spline([(12000, 1000), (13000, 2000), (14000, 1000), (15000, 2000)])
    doc.header["$LTSCALE"] = 2.0
    doc.linetypes.add("点划", pattern=[20.0, 12.0, -4.0, 0.0, -4.0], description="点划 _ . _")
    msp.add_arc((-30000, 2000), 500, 30, 120, dxfattribs={"extrusion": (0, 0, -1)})
    msp.add_circle((-30000, 4000), 300, dxfattribs={"extrusion": (0, 0, -1)})
    msp.add_line((0, 9000), (9000, 9000), dxfattribs={"linetype": "点划", "ltscale": 3.0})
    msp.add_text("斜体", dxfattribs={"height": 300, "insert": (1000, 9500), "width": 0.7, "oblique": 15,
                                   "text_generation_flag": 2})
    turned = msp.add_mtext("转角\P文字", dxfattribs={"char_height": 250, "insert": (5000, 9500),
                                                    "rotation": 30, "line_spacing_factor": 1.5})
    turned.dxf.width = 3000
    grid = msp.add_blockref("房间标签", (30000, 0), dxfattribs={"extrusion": (0, 0, -1)})
    grid.grid(size=(2, 3), spacing=(800, 1200))
    wide = msp.add_lwpolyline([(0, 11000), (4000, 11000), (4000, 12000)])
    wide.dxf.const_width = 50
    doc.saveas(path)


if __name__ == "__main__":
    build(sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else "R2018")
