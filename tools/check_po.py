#!/usr/bin/env python3
"""Keeps the translation template and every translation in step with the program's texts.

Fails (exit 1, every problem listed) when:
  - the template made from res/strings.txt and res/quillon.rc differs from the committed one;
  - a .po misses an entry of the template, or keeps one that the template no longer has (also "#~");
  - an entry is fuzzy or untranslated, or has lost the template's c-format flag (msgfmt --check-format
    only checks flagged entries, so a dropped flag would hide a broken conversion);
  - a translation changes the leading blanks, the number of line breaks or the trailing line breaks,
    or loses or repeats one of the window framework's numbered inserts ("%1");
  - a menu text loses or doubles its "&", repeats an access key within its menu, or changes the
    shortcut after its tab.
  - the printf conversions of a c-format text change in number, type or order, or become positional
    ("%2$s": msgfmt accepts it, the Windows run-time printf does not). msgfmt --check-format judges
    them too, at compile time.

usage: check_po.py --template GEN.pot --committed locale/quillon.pot --rc res/quillon.rc
                   [--strings res/strings.txt] [--stamp FILE] PO...
"""
import argparse
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from make_pot import PRINTF, c_unescape, rc_texts  # noqa: E402

REGENERATE = ("regenerate it with\n"
              "    python3 tools/make_pot.py res/strings.txt res/quillon.rc -o locale/quillon.pot\n"
              "  (or: cmake --build <build dir> --target update_pot), then bring each translation up to date:\n"
              "    msgmerge --update --no-fuzzy-matching --backup=none locale/<lang>.po locale/quillon.pot\n"
              "    msgattrib --no-obsolete -o locale/<lang>.po locale/<lang>.po\n"
              "  and translate what is new")


class Entry:
    def __init__(self, line):
        self.line = line
        self.msgid = None
        self.msgstr = None
        self.flags = set()
        self.obsolete = False
        self.context = None
        self.plural = False


def parse_po(path):
    """Entries of a PO file in order; the header is the entry whose msgid is empty."""
    return parse_po_text(Path(path).read_text(encoding="utf-8"), path)


def parse_po_text(text, path):
    entries = []
    cur = None
    field = None
    problems = []

    def finish():
        nonlocal cur
        if cur is not None and cur.msgid is not None:
            entries.append(cur)
        cur = None

    for n, raw in enumerate(text.splitlines(), 1):
        line = raw.strip()
        if not line:
            finish()
            field = None
            continue
        obsolete = line.startswith("#~")
        if obsolete:
            line = line[2:].strip()
            if line.startswith("|"):
                continue
        elif line.startswith("#"):
            if cur is not None and cur.msgid is not None:
                finish()
            if cur is None:
                cur = Entry(n)
            if line.startswith("#,"):
                cur.flags |= {f.strip() for f in line[2:].split(",") if f.strip()}
            continue
        m = re.match(r'^(msgctxt|msgid_plural|msgid|msgstr(?:\[\d+\])?)\s+"(.*)"$', line)
        if m:
            keyword, text = m.group(1), m.group(2)
            if keyword in ("msgid", "msgctxt") and cur is not None and cur.msgid is not None:
                finish()
            if cur is None:
                cur = Entry(n)
            cur.obsolete = cur.obsolete or obsolete
            field = keyword
            value = unquote(text, path, n, problems)
            if keyword == "msgid":
                cur.msgid = value
            elif keyword == "msgctxt":
                cur.context = value
            elif keyword == "msgid_plural":
                cur.plural = True
            elif cur.msgstr is None:
                cur.msgstr = value
            continue
        m = re.match(r'^"(.*)"$', line)
        if m and cur is not None and field:
            value = unquote(m.group(1), path, n, problems)
            if field == "msgid":
                cur.msgid += value
            elif field == "msgctxt":
                cur.context += value
            elif field.startswith("msgstr") and field in ("msgstr", "msgstr[0]"):
                cur.msgstr += value
            continue
        problems.append(f"{path}:{n}: cannot read this line: {raw!r}")
    finish()
    return entries, problems


def unquote(text, path, n, problems):
    try:
        return c_unescape(text)
    except ValueError as e:
        problems.append(f"{path}:{n}: {e}")
        return ""


def header_fields(entries):
    for e in entries:
        if e.msgid == "" and not e.obsolete:
            return dict(line.split(":", 1) for line in (e.msgstr or "").splitlines() if ":" in line)
    return None


def show(text):
    return repr(text)[1:-1] if len(text) <= 60 else repr(text[:57])[1:-1] + "..."


def leading_blanks(text):
    return text[:len(text) - len(text.lstrip(" "))]


def trailing_breaks(text):
    return len(text) - len(text.rstrip("\n"))


def access_key(text):
    """The character after the single "&" ("&&" is a literal ampersand); None when there is none,
    "many" when there are several."""
    keys = [m.group(1) for m in re.finditer(r"&(.)", text.replace("&&", "")) if m.group(1) != " "]
    if not keys:
        return None
    return keys[0].casefold() if len(keys) == 1 else "many"


def conversion_types(text):
    """The printf conversions of a text as the arguments see them: length modifier and conversion, in
    order; a positional one ("%2$s") is kept whole, since the Windows run-time printf does not take it."""
    out = []
    for m in PRINTF.finditer(text):
        spec = m.group(0)
        if spec == "%%":
            continue
        if "$" in spec:
            out.append(spec)
        else:
            out.append(re.search(r"(?:hh|h|ll|l|L|q|j|z|t|I64|I32)?[a-zA-Z]$", spec).group(0))
    return out


def check_entry(path, e, tmpl, problems):
    where = f"{path}:{e.line}: \"{show(e.msgid)}\""
    if "fuzzy" in e.flags:
        problems.append(f"{where}: marked fuzzy (a fuzzy translation is not shipped: review it, drop the flag)")
    if not e.msgstr:
        problems.append(f"{where}: not translated")
        return
    if "c-format" in tmpl.flags and "c-format" not in e.flags:
        problems.append(f"{where}: the template's c-format flag is missing (msgfmt would not check it)")
    if "c-format" in tmpl.flags and conversion_types(e.msgstr) != conversion_types(e.msgid):
        problems.append(f"{where}: the printf conversions must stay {conversion_types(e.msgid)} in this order, "
                        f"not {conversion_types(e.msgstr)} (no positional %n$ forms)")
    if leading_blanks(e.msgstr) != leading_blanks(e.msgid):
        problems.append(f"{where}: leading blanks differ from the English text")
    if trailing_breaks(e.msgstr) != trailing_breaks(e.msgid):
        problems.append(f"{where}: ends in {trailing_breaks(e.msgstr)} line breaks, the English text in "
                        f"{trailing_breaks(e.msgid)}")
    if sorted(re.findall(r"%[1-9]", e.msgstr)) != sorted(re.findall(r"%[1-9]", e.msgid)):
        problems.append(f"{where}: the numbered inserts {sorted(set(re.findall(r'%[1-9]', e.msgid)))} must each "
                        f"stay, once (their order may change)")
    if e.msgstr.count("\n") != e.msgid.count("\n"):
        problems.append(f"{where}: has {e.msgstr.count(chr(10))} line breaks, the English text "
                        f"{e.msgid.count(chr(10))} (prompt and tooltip, and message lines, are split at them)")


def check_menus(path, translations, menu_items, problems):
    groups = {}
    for item in menu_items:
        groups.setdefault(item.menu, []).append(item)
    for group, items in groups.items():
        seen = {}
        for item in items:
            text = translations.get(item.text)
            if not text:
                continue
            where = f"{path}: menu text \"{show(item.text)}\" -> \"{show(text)}\""
            if "\t" in item.text:
                shortcut = item.text.split("\t", 1)[1]
                if "\t" not in text or text.split("\t", 1)[1] != shortcut:
                    problems.append(f"{where}: the shortcut must stay \"\\t{shortcut}\"")
            english, key = access_key(item.text), access_key(text)
            if english and key is None:
                problems.append(f"{where}: has no \"&\" access key")
            elif key == "many":
                problems.append(f"{where}: has more than one \"&\" access key")
            elif key and english:
                if key in seen:
                    problems.append(f"{where}: access key \"{key}\" is already used by \"{show(seen[key])}\" "
                                    f"in the same menu")
                seen[key] = text


def check_po(path, template, menu_items, problems):
    entries, read_problems = parse_po(path)
    problems += read_problems
    fields = header_fields(entries)
    if fields is None:
        problems.append(f"{path}: no header entry")
    else:
        if "charset=UTF-8" not in fields.get("Content-Type", ""):
            problems.append(f"{path}: the header must declare charset=UTF-8")
        if not fields.get("Language", "").strip():
            problems.append(f"{path}: the header names no Language")
    seen = {}
    for e in entries:
        if e.msgid == "":
            continue
        if e.obsolete:
            problems.append(f"{path}:{e.line}: obsolete entry \"{show(e.msgid)}\" (\"#~\"): remove it")
            continue
        if e.context is not None or e.plural:
            problems.append(f"{path}:{e.line}: \"{show(e.msgid)}\": the template has no contexts or plurals")
        if e.msgid in seen:
            problems.append(f"{path}:{e.line}: \"{show(e.msgid)}\" appears twice")
        seen[e.msgid] = e
        tmpl = template.get(e.msgid)
        if tmpl is None:
            problems.append(f"{path}:{e.line}: obsolete entry \"{show(e.msgid)}\": the template has no such text")
        else:
            check_entry(path, e, tmpl, problems)
    for msgid in template:
        if msgid not in seen:
            problems.append(f"{path}: missing entry \"{show(msgid)}\"")
    check_menus(path, {k: v.msgstr for k, v in seen.items()}, menu_items, problems)


def main(argv):
    ap = argparse.ArgumentParser(description="check the template and the translations")
    ap.add_argument("--template", required=True, help="the template as generated now")
    ap.add_argument("--committed", help="the committed template, which must equal the generated one")
    ap.add_argument("--rc", required=True, help="the resource script, for the menus' structure")
    ap.add_argument("--stamp", help="file touched when every check passes")
    ap.add_argument("po", nargs="*")
    args = ap.parse_args(argv[1:])

    problems = []
    generated = Path(args.template).read_text(encoding="utf-8")
    if args.committed:
        committed = Path(args.committed)
        if not committed.exists() or committed.read_text(encoding="utf-8") != generated:
            problems.append(f"{committed} is not the template that res/strings.txt and res/quillon.rc give: "
                            + REGENERATE)
    entries, read_problems = parse_po(args.template)
    problems += read_problems
    template = {e.msgid: e for e in entries if e.msgid and not e.obsolete}
    # the catalog's hash reads key bytes as signed chars and msgfmt's as unsigned: they agree on ASCII only
    for msgid in template:
        if not msgid.isascii():
            problems.append(f"{args.template}: \"{show(msgid)}\" is not ASCII; an English text is a catalog key "
                            "and must be ASCII to be found through the catalog's hash table")
    menu_items = [t for t in rc_texts(args.rc) if t.menu]
    for po in args.po:
        check_po(po, template, menu_items, problems)

    if problems:
        for p in problems:
            print(f"check_po: {p}", file=sys.stderr)
        print(f"check_po: {len(problems)} problem(s) in the translations", file=sys.stderr)
        return 1
    if args.stamp:
        Path(args.stamp).write_text("ok\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
