"""Audits DXF drawings with ezdxf: one JSON line per file with every error and fix.

Exit status 0 when every file loads and its audit finds nothing, 1 otherwise.
"""
import json
import sys

import ezdxf


def audit(path):
    try:
        doc = ezdxf.readfile(path)
    except Exception as exc:  # a file that does not load is a finding too
        return {"file": path, "load": str(exc), "errors": [], "fixes": []}
    auditor = doc.audit()
    return {
        "file": path,
        "load": "",
        "errors": [e.message for e in auditor.errors],
        "fixes": [f.message for f in auditor.fixes],
    }


def main(paths):
    clean = True
    for path in paths:
        report = audit(path)
        clean = clean and not (report["load"] or report["errors"] or report["fixes"])
        print(json.dumps(report, ensure_ascii=False))
    return 0 if clean else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
