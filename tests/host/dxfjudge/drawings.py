"""The drawings the judge compares: one per kind of entity, look or transform
that drawings from other programs hold, each made with ezdxf."""
import math

import ezdxf
from ezdxf.math import Vec3

MIRROR = (0, 0, -1)
TILTED = Vec3(1, 1, 1).normalize()


def new(version="R2010"):
    doc = ezdxf.new(version, setup=True)
    doc.header["$LTSCALE"] = 1.0
    return doc, doc.modelspace()


def arc_mirrored(doc, msp):
    msp.add_arc((8000, 0), 500, 10, 120, dxfattribs={"extrusion": MIRROR})
    msp.add_circle((3000, 2000), 300, dxfattribs={"extrusion": MIRROR})


def arc_tilted(doc, msp):
    msp.add_arc((100, 50, 20), 40, 0, 200, dxfattribs={"extrusion": TILTED})
    msp.add_circle((0, 0, 5), 30, dxfattribs={"extrusion": TILTED})


def text_mirrored(doc, msp):
    msp.add_text("MIRROR", dxfattribs={"height": 25, "insert": (500, 100), "extrusion": MIRROR, "rotation": 20})


def mtext_mirrored(doc, msp):
    msp.add_mtext("MTEXT BELOW", dxfattribs={"char_height": 20, "insert": (400, 300), "extrusion": MIRROR})


def _tag_block(doc):
    block = doc.blocks.new("TAG")
    block.add_lwpolyline([(0, 0), (3000, 0), (3000, 1000)], close=False)
    block.add_attdef("NO", (500, 200), dxfattribs={"height": 250})
    return block


def attrib_mirrored_insert(doc, msp):
    _tag_block(doc)
    ref = msp.add_blockref("TAG", (27000, 5000), dxfattribs={"xscale": -1})
    ref.add_auto_attribs({"NO": "A-1"})


def insert_extrusion(doc, msp):
    _tag_block(doc)
    msp.add_blockref("TAG", (5000, 2000), dxfattribs={"extrusion": MIRROR, "rotation": 30})


def polyline_r12_extrusion(doc, msp):
    msp.add_polyline2d([(100, 0), (300, 0), (300, 200)], dxfattribs={"extrusion": MIRROR})


def nested_mirrored(doc, msp):
    inner = doc.blocks.new("INNER")
    inner.add_lwpolyline([(0, 0), (400, 0), (400, 100), (100, 300)])
    outer = doc.blocks.new("OUTER")
    outer.add_blockref("INNER", (200, 100), dxfattribs={"rotation": 15})
    outer.add_line((0, 0), (0, 500))
    cases = [((-1, 1), 0), ((-1, 1), 90), ((1, -1), 90), ((-1, -1), 0), ((-2, 2), 30)]
    for k, ((sx, sy), angle) in enumerate(cases):
        msp.add_blockref("OUTER", (k * 2000, 0), dxfattribs={"xscale": sx, "yscale": sy, "rotation": angle})


def mtext_rotation(doc, msp):
    msp.add_mtext("THIRTY", dxfattribs={"char_height": 20, "insert": (0, 0), "rotation": 30})
    msp.add_mtext("NINETY", dxfattribs={"char_height": 20, "insert": (500, 0), "rotation": 90})


def ellipse(doc, msp):
    msp.add_ellipse((100, 100), major_axis=(300, 100), ratio=0.4, start_param=0.3, end_param=5.0)
    msp.add_ellipse((900, 100), major_axis=(0, 200), ratio=0.5)


def spline(doc, msp):
    msp.add_open_spline([(0, 0), (100, 200), (300, -100), (500, 150), (700, 0)], degree=3)
    msp.add_rational_spline([(0, 400), (200, 600), (400, 400)], weights=[1, 3, 1], degree=2)


def hatch_solid(doc, msp):
    h = msp.add_hatch(color=3)
    h.paths.add_polyline_path([(0, 0), (500, 0), (500, 300), (0, 300)], is_closed=True)
    h.paths.add_polyline_path([(100, 100), (200, 100), (200, 200), (100, 200)], is_closed=True)
    h2 = msp.add_hatch(color=4)
    ep = h2.paths.add_edge_path()
    ep.add_line((700, 0), (1000, 0))
    ep.add_arc((1000, 150), 150, -90, 90)
    ep.add_line((1000, 300), (700, 300))
    ep.add_line((700, 300), (700, 0))


def hatch_pattern(doc, msp):
    h = msp.add_hatch(color=2)
    h.set_pattern_fill("ANSI31", scale=20)
    h.paths.add_polyline_path([(0, 0), (600, 0), (600, 400), (0, 400)], is_closed=True)


def hatch_gradient(doc, msp):
    h = msp.add_hatch()
    h.set_gradient((255, 0, 0), (0, 0, 255))
    h.paths.add_polyline_path([(0, 0), (400, 0), (200, 300)], is_closed=True)


def dimension(doc, msp):
    dim = msp.add_linear_dim(base=(0, 300), p1=(0, 0), p2=(1000, 0), dimstyle="EZDXF")
    dim.render()


def solid_trace_face(doc, msp):
    msp.add_solid([(0, 0), (200, 0), (0, 100), (200, 150)])
    msp.add_trace([(300, 0), (500, 0), (300, 50), (500, 50)])
    msp.add_3dface([(600, 0, 0), (800, 0, 10), (800, 200, 20), (600, 200, 0)])


def point(doc, msp):
    for k in range(5):
        msp.add_point((k * 100, k * 50))


def leader(doc, msp):
    msp.add_leader([(0, 0), (300, 300), (600, 300)], dimstyle="EZDXF")


def mline(doc, msp):
    msp.add_mline([(0, 0), (1000, 0), (1000, 600)], dxfattribs={"scale_factor": 50})


def multileader(doc, msp):
    ml = msp.add_multileader_mtext("Standard")
    ml.set_content("NOTE", char_height=25)
    ml.add_leader_line(ezdxf.render.ConnectionSide.left, [Vec3(-300, -200)])
    ml.build(insert=ezdxf.math.Vec2(0, 0))


def polyface(doc, msp):
    mesh = msp.add_polyface()
    mesh.append_face([(0, 0, 0), (300, 0, 0), (300, 300, 0), (0, 300, 0)])
    mesh.append_face([(300, 0, 0), (500, 100, 50), (500, 400, 50), (300, 300, 0)])


def minsert(doc, msp):
    block = doc.blocks.new("CELL")
    block.add_lwpolyline([(0, 0), (80, 0), (80, 50), (0, 50)], close=True)
    msp.add_blockref("CELL", (0, 0), dxfattribs={"rotation": 10}).grid(size=(4, 6), spacing=(100, 150))


def linetypes(doc, msp):
    # Patterns at the drawing's scale times each line's own.
    doc.header["$LTSCALE"] = 2.0
    doc.linetypes.add("HIDDEN", [0.375, 0.25, -0.125], description="Hidden __ __ __")
    doc.layers.add("CENTRELINES", linetype="CENTER")
    for k, name in enumerate(["DASHED", "CENTER", "HIDDEN", "DASHDOT", "DOT", "PHANTOM"]):
        msp.add_line((0, k * 200), (3000, k * 200), dxfattribs={"linetype": name, "ltscale": 200})
    msp.add_line((0, 1400), (3000, 1400), dxfattribs={"layer": "CENTRELINES", "ltscale": 150})
    msp.add_arc((1500, 2500), 500, 30, 300, dxfattribs={"linetype": "DASHED", "ltscale": 150})


def polyline_width(doc, msp):
    msp.add_lwpolyline([(0, 0), (500, 0), (500, 300)], dxfattribs={"const_width": 40})
    msp.add_lwpolyline([(800, 0, 0, 0, 0.5), (1200, 0)], format="xyseb", dxfattribs={"const_width": 20})


def mtext_codes(doc, msp):
    msp.add_mtext("{\\H2x;BIG} {\\C1;RED} \\LUNDER\\l \\OOVER\\o \\fArial|b1;FONT", dxfattribs={"char_height": 20, "insert": (0, 0), "width": 2000})
    msp.add_mtext("A \\S1/2; B", dxfattribs={"char_height": 20, "insert": (0, -200)})
    msp.add_mtext("%%c50 30%%d %%p5", dxfattribs={"char_height": 20, "insert": (0, -400)})


def mtext_wrap(doc, msp):
    words = " ".join(["WORD%d" % k for k in range(40)])
    msp.add_mtext(words, dxfattribs={"char_height": 10, "insert": (0, 0), "width": 400})


def text_looks(doc, msp):
    msp.add_text("WIDE", dxfattribs={"height": 20, "insert": (0, 0), "width": 2.0})
    msp.add_text("SLANT", dxfattribs={"height": 20, "insert": (0, 100), "oblique": 15})
    msp.add_text("FIT", dxfattribs={"height": 20}).set_placement((0, 200), (400, 200), align=ezdxf.enums.TextEntityAlignment.FIT)
    msp.add_text("ALIGNED", dxfattribs={"height": 20}).set_placement((0, 300), (300, 350), align=ezdxf.enums.TextEntityAlignment.ALIGNED)
    msp.add_text("BACK", dxfattribs={"height": 20, "insert": (0, 400), "text_generation_flag": 2})
    msp.add_text("CENTRE", dxfattribs={"height": 20}).set_placement((200, 500), align=ezdxf.enums.TextEntityAlignment.MIDDLE_CENTER)


def caret_codes(doc, msp):
    msp.add_text("A^IB C^ D", dxfattribs={"height": 20, "insert": (0, 0)})
    msp.add_text("%%c25 %%p1 45%%d", dxfattribs={"height": 20, "insert": (0, 100)})


def circle_nonuniform(doc, msp):
    block = doc.blocks.new("ROUND")
    block.add_circle((0, 0), 100)
    block.add_arc((300, 0), 100, 0, 180)
    msp.add_blockref("ROUND", (0, 0), dxfattribs={"xscale": 3, "yscale": 1, "rotation": 30})


def deep_nesting(doc, msp):
    doc.blocks.new("L0").add_line((0, 0), (100, 0))
    for k in range(1, 60):
        doc.blocks.new("L%d" % k).add_blockref("L%d" % (k - 1), (0, 10))
    msp.add_blockref("L59", (0, 0))


KINDS = {
    "arc_mirrored": arc_mirrored,
    "arc_tilted": arc_tilted,
    "text_mirrored": text_mirrored,
    "mtext_mirrored": mtext_mirrored,
    "attrib_mirrored_insert": attrib_mirrored_insert,
    "insert_extrusion": insert_extrusion,
    "polyline_r12_extrusion": (polyline_r12_extrusion, "R12"),
    "nested_mirrored": nested_mirrored,
    "mtext_rotation": mtext_rotation,
    "ellipse": ellipse,
    "spline": spline,
    "hatch_solid": hatch_solid,
    "hatch_pattern": hatch_pattern,
    "hatch_gradient": hatch_gradient,
    "dimension": dimension,
    "solid_trace_3dface": solid_trace_face,
    "point": point,
    "leader": leader,
    "mline": mline,
    "multileader": multileader,
    "polyface": polyface,
    "minsert": minsert,
    "linetypes": linetypes,
    "polyline_width": polyline_width,
    "mtext_codes": mtext_codes,
    "mtext_wrap": mtext_wrap,
    "text_looks": text_looks,
    "caret_codes": caret_codes,
    "circle_nonuniform": circle_nonuniform,
    "deep_nesting": deep_nesting,
}


def make(kind, path, binary=False):
    entry = KINDS[kind]
    maker, version = entry if isinstance(entry, tuple) else (entry, "R2010")
    doc, msp = new(version)
    maker(doc, msp)
    doc.saveas(path, fmt="bin" if binary else "asc")
    return path
