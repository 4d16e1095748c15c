#!/usr/bin/env python3
"""Makes the string table's three forms from its one source, res/strings.txt.

Each line of the source is `<id> <NAME> "<text>"`, the text C-escaped (\\n, \\t, \\", \\\\) and UTF-8;
blank lines and lines starting with # are skipped. Writes into the output directory:
  resourceIds.h   #define NAME id, for C++ and the resource compiler; the window framework's own names
                  come from its header (win/winIds.h), which resourceIds.h includes, so each name is
                  defined once, and an entry that numbers one of them differently fails the build
  strings.rc      the resource string table
  stringTable.h/.cpp  the native build's table (the resource string table stands in for it on Windows)

usage: strings.py res/strings.txt OUTDIR [--framework-ids win/winIds.h]
"""
import argparse
import re
import sys
from pathlib import Path

LINE = re.compile(r'^(\d+)\s+([A-Z_][A-Z0-9_]*)\s+"((?:[^"\\]|\\.)*)"\s*$')


def parse(path):
    entries, ids, names = [], set(), set()
    for n, raw in enumerate(Path(path).read_text(encoding="utf-8").splitlines(), 1):
        line = raw.strip()
        if not line or line.startswith("#"):
            continue
        m = LINE.match(line)
        if not m:
            sys.exit(f"{path}:{n}: expected <id> <NAME> \"text\"")
        ident, name, text = int(m.group(1)), m.group(2), m.group(3)
        if ident in ids or name in names:
            sys.exit(f"{path}:{n}: id {ident} or name {name} used twice")
        if not 0 < ident < 65536:
            sys.exit(f"{path}:{n}: id {ident} out of range")
        ids.add(ident)
        names.add(name)
        entries.append((ident, name, text))
    return sorted(entries)


def framework_ids(path):
    """The names and ids that the window framework defines itself."""
    return {m.group(1): int(m.group(2))
            for m in re.finditer(r'^#define\s+([A-Z_][A-Z0-9_]*)\s+(\d+)\s*$', Path(path).read_text(), re.M)}


def unescape(text):
    return text.encode("latin-1", "backslashreplace").decode("unicode_escape").encode("latin-1").decode("utf-8") \
        if "\\" in text else text


def c_literal(text):
    raw = unescape(text).encode("utf-8")
    out = []
    for b in raw:
        if b in (0x22, 0x5C):
            out.append("\\" + chr(b))
        elif 0x20 <= b < 0x7F:
            out.append(chr(b))
        else:
            out.append("\\%03o" % b)
    return '"' + "".join(out) + '"'


def rc_literal(text):
    # windres takes C escapes inside the quotes; a quote itself is doubled
    return 'L"' + text.replace('\\"', '""') + '"'


def write_if_changed(path, content):
    if not path.exists() or path.read_text(encoding="utf-8") != content:
        path.write_text(content, encoding="utf-8")


def main():
    ap = argparse.ArgumentParser(description="Make the string table's three forms from res/strings.txt.")
    ap.add_argument("strings", metavar="strings.txt", help="the string table's one source")
    ap.add_argument("outdir", metavar="OUTDIR", help="where resourceIds.h, strings.rc and stringTable.h/.cpp go")
    ap.add_argument("--framework-ids", metavar="HEADER", help="the window framework's own ids, included, not repeated")
    args = ap.parse_args()
    entries = parse(args.strings)
    own = framework_ids(args.framework_ids) if args.framework_ids else {}
    for ident, name, _ in entries:
        if name in own and own[name] != ident:
            sys.exit(f"{args.strings}: {name} is {ident} here but {own[name]} in {args.framework_ids}")
    out = Path(args.outdir)
    out.mkdir(parents=True, exist_ok=True)

    ids = ["// Generated from res/strings.txt: do not edit.", "#pragma once", ""]
    if own:
        ids += ['#include "win/winIds.h"', ""]
    ids += [f"#define {name} {ident}" for ident, name, _ in entries if name not in own]
    write_if_changed(out / "resourceIds.h", "\n".join(ids) + "\n")

    rc = ["// Generated from res/strings.txt: do not edit.", "STRINGTABLE", "BEGIN"]
    rc += [f"    {ident}, {rc_literal(text)}" for ident, _, text in entries]
    rc += ["END"]
    write_if_changed(out / "strings.rc", "\n".join(rc) + "\n")

    write_if_changed(out / "stringTable.h", "\n".join([
        "// Generated from res/strings.txt: do not edit.",
        "#pragma once",
        "#include <string>",
        "// The UTF-8 text of a string-table entry; empty when the id does not exist.",
        "std::string qwzStringTableLookup(unsigned id);", ""]))
    cpp = ["// Generated from res/strings.txt: do not edit.", '#include "stringTable.h"', "#include <algorithm>",
           "#include <iterator>", "", "namespace {", "struct Entry { unsigned id; const char* text; };",
           "const Entry table[] = {"]
    cpp += [f"    {{{ident}, {c_literal(text)}}}," for ident, _, text in entries]
    cpp += ["};", "} // namespace", "",
            "std::string qwzStringTableLookup(unsigned id)", "{",
            "    auto it = std::lower_bound(std::begin(table), std::end(table), id,",
            "                               [](const Entry& e, unsigned v) { return e.id < v; });",
            "    return it != std::end(table) && it->id == id ? it->text : std::string();", "}", ""]
    write_if_changed(out / "stringTable.cpp", "\n".join(cpp))


if __name__ == "__main__":
    main()
