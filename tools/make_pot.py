#!/usr/bin/env python3
"""Makes the translation template, quillon.pot, from every text a user can see.

Sources: the string table (res/strings.txt) and the menu and dialog texts of res/quillon.rc. A text is
its own catalog key exactly as the program holds it at run time, so "&" and the "\\t" before a shortcut
stay in the msgid. The output is deterministic (no dates), so a build can compare it byte for byte
with the committed locale/quillon.pot. Also a library for tools/check_po.py: rc parsing and PO
quoting live here once.

usage: make_pot.py res/strings.txt res/quillon.rc -o OUT.pot
"""
import argparse
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import strings  # noqa: E402  (the string table's own parser)

# printf conversions as the C library takes them; "%%" is a literal, not a conversion
PRINTF = re.compile(r"%(?:\d+\$)?[-+ #0']*(?:\*|\d+)?(?:\.(?:\*|\d+))?(?:hh|h|ll|l|L|q|j|z|t|I64|I32)?"
                    r"[diouxXeEfFgGaAcspn%]")

ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "a": "\a", "b": "\b", "f": "\f", "v": "\v",
           "\\": "\\", '"': '"', "'": "'", "?": "?"}


def c_unescape(text):
    """C escapes as the resource compiler and msgfmt read them; the result is the run-time text."""
    out = bytearray()
    i = 0
    while i < len(text):
        ch = text[i]
        if ch != "\\" or i + 1 == len(text):
            out += ch.encode("utf-8")
            i += 1
            continue
        nxt = text[i + 1]
        if nxt in ESCAPES:
            out += ESCAPES[nxt].encode()
            i += 2
        elif nxt in "01234567":
            m = re.match(r"[0-7]{1,3}", text[i + 1:])
            out.append(int(m.group(0), 8) & 0xFF)
            i += 1 + len(m.group(0))
        elif nxt == "x":
            m = re.match(r"[0-9a-fA-F]+", text[i + 2:])
            if not m:
                raise ValueError(f"bad \\x escape in {text!r}")
            out.append(int(m.group(0), 16) & 0xFF)
            i += 2 + len(m.group(0))
        else:
            raise ValueError(f"unknown escape \\{nxt} in {text!r}")
    return out.decode("utf-8")


def is_c_format(text):
    return any(m.group(0) != "%%" for m in PRINTF.finditer(text))


def conversions(text):
    return [m.group(0) for m in PRINTF.finditer(text) if m.group(0) != "%%"]


# --- the resource script ---------------------------------------------------------------------------

RC_STRING = re.compile(r'"((?:[^"]|"")*)"')
TEXT_CONTROLS = {"LTEXT", "RTEXT", "CTEXT", "PUSHBUTTON", "DEFPUSHBUTTON", "GROUPBOX", "CHECKBOX",
                 "AUTOCHECKBOX", "STATE3", "AUTO3STATE", "RADIOBUTTON", "AUTORADIOBUTTON", "PUSHBOX",
                 "CONTROL"}


def rc_string(literal):
    # inside rc quotes a quote is doubled; the rest are C escapes
    return c_unescape(literal.replace('""', '\\"'))


def rc_statements(path):
    """(line number, statement) pairs with comments and preprocessor lines removed and continued lines
    (ending in "," or "|") joined."""
    out, pending, start = [], "", 0
    for n, raw in enumerate(Path(path).read_text(encoding="utf-8").splitlines(), 1):
        line = strip_comment(raw).strip()
        if not line or line.startswith("#"):
            continue
        if not pending:
            start = n
        pending = f"{pending} {line}" if pending else line
        if pending.endswith((",", "|")):
            continue
        out.append((start, pending))
        pending = ""
    if pending:
        out.append((start, pending))
    return out


def strip_comment(line):
    in_str = False
    for i, ch in enumerate(line):
        if ch == '"':
            in_str = not in_str
        elif not in_str and line.startswith("//", i):
            return line[:i]
    return line


class RcText:
    """One user-visible text of the resource script, with where it is shown."""

    def __init__(self, text, where, menu=None, line=0):
        self.text, self.where, self.menu, self.line = text, where, menu, line


WINDOWS_IDS = {"IDOK": 1, "IDCANCEL": 2, "IDABORT": 3, "IDRETRY": 4, "IDIGNORE": 5, "IDYES": 6, "IDNO": 7,
               "IDCLOSE": 8, "IDHELP": 9}


def rc_names(rc_path, strings_path=None):
    """Symbolic id -> number, from the string table, resource.h beside the script and windows.h's few."""
    names = dict(WINDOWS_IDS)
    if strings_path:
        names.update({name: ident for ident, name, _ in strings.parse(strings_path)})
    header = Path(rc_path).with_name("resource.h")
    if header.exists():
        for m in re.finditer(r"^#define\s+(\w+)\s+(\d+)", header.read_text(encoding="utf-8"), re.M):
            names[m.group(1)] = int(m.group(2))
    return names


def rc_texts(path, names=None):
    """Menu item, popup, dialog caption and control texts in file order. `menu` names the list of
    sibling items (a menu bar or one popup) in which each "&" accelerator must be unique."""
    names = names or {}

    def label(name):
        return f"{names[name]} {name}" if name in names else name

    texts = []
    stack = []  # open blocks: ("menu", group id) / ("popup", group id) / ("dialog", None) / ("other", None)
    pending = None  # the kind of block that the next BEGIN opens
    groups = 0
    current = None  # resource id of the menu or dialog being read
    for n, stmt in rc_statements(path):
        words = stmt.replace(",", " ").split()
        head = words[0].upper()
        if len(words) >= 2 and words[1].upper() in ("MENU", "MENUEX"):
            current, pending = words[0], ("menu", f"menu {words[0]}")
        elif len(words) >= 2 and words[1].upper() in ("DIALOG", "DIALOGEX"):
            current, pending = words[0], ("dialog", None)
        elif head in ("BEGIN", "{"):
            stack.append(pending or ("other", None))
            pending = None
        elif head in ("END", "}"):
            if stack:
                stack.pop()
        elif stack and stack[-1][0] in ("menu", "popup"):
            group = stack[-1][1]
            m = RC_STRING.search(stmt)
            if head == "POPUP" and m:
                texts.append(RcText(rc_string(m.group(1)), f"menu {label(current)}: popup", group, n))
                groups += 1
                pending = ("popup", f"menu {current} popup {groups}")
            elif head == "MENUITEM" and m:
                ident = stmt[m.end():].replace(",", " ").split()
                name = ident[0] if ident else "?"
                texts.append(RcText(rc_string(m.group(1)), f"menu {label(current)}: item {label(name)}", group, n))
        elif stack and stack[-1][0] == "dialog" and head in TEXT_CONTROLS:
            m = RC_STRING.search(stmt)
            if m and not stmt[len(head):m.start()].strip() and m.group(1):
                ident = stmt[m.end():].replace(",", " ").split()
                name = ident[0] if ident else "?"
                texts.append(RcText(rc_string(m.group(1)), f"dialog {label(current)}: control {label(name)}", None, n))
        elif pending and pending[0] == "dialog" and head == "CAPTION":
            m = RC_STRING.search(stmt)
            if m and m.group(1):
                texts.append(RcText(rc_string(m.group(1)), f"dialog {label(current)}: caption", None, n))
    return texts


# --- PO quoting ------------------------------------------------------------------------------------

def po_escape(text):
    out = []
    for ch in text:
        if ch == "\\":
            out.append("\\\\")
        elif ch == '"':
            out.append('\\"')
        elif ch == "\n":
            out.append("\\n")
        elif ch == "\t":
            out.append("\\t")
        elif ch == "\r":
            out.append("\\r")
        elif ord(ch) < 0x20:
            out.append("\\%03o" % ord(ch))
        else:
            out.append(ch)
    return "".join(out)


def po_field(keyword, text):
    """A msgid/msgstr field; texts with inner line breaks are written one line of text per PO line."""
    pieces = re.findall(r"[^\n]*\n|[^\n]+$", text) if text else [""]
    if len(pieces) == 1:
        return f'{keyword} "{po_escape(text)}"'
    return "\n".join([f'{keyword} ""'] + [f'"{po_escape(p)}"' for p in pieces])


HEADER = """\
# Translation template of Quillon's user-visible texts.
# Generated by tools/make_pot.py from res/strings.txt and res/quillon.rc: do not edit by hand.
#
#, fuzzy
msgid ""
msgstr ""
"Project-Id-Version: Quillon\\n"
"Report-Msgid-Bugs-To: \\n"
"PO-Revision-Date: YEAR-MO-DA HO:MI+ZONE\\n"
"Last-Translator: FULL NAME <EMAIL@ADDRESS>\\n"
"Language-Team: LANGUAGE <LL@li.org>\\n"
"Language: \\n"
"MIME-Version: 1.0\\n"
"Content-Type: text/plain; charset=UTF-8\\n"
"Content-Transfer-Encoding: 8bit\\n"
"""


def template_entries(strings_path, rc_path):
    """Ordered {msgid: [comment, ...]}: the string table by id, then the resource script in file order.
    A text used in several places is one entry naming them all."""
    entries = {}
    for ident, name, text in strings.parse(strings_path):
        entries.setdefault(c_unescape(text), []).append(f"string {ident} {name}")
    for item in rc_texts(rc_path, rc_names(rc_path, strings_path)):
        entries.setdefault(item.text, []).append(item.where)
    return entries


def make_pot(strings_path, rc_path):
    blocks = [HEADER]
    for msgid, where in template_entries(strings_path, rc_path).items():
        if not msgid:
            continue
        lines = [f"#. {w}" for w in where]
        if is_c_format(msgid):
            lines.append("#, c-format")
        lines += [po_field("msgid", msgid), 'msgstr ""']
        blocks.append("\n".join(lines) + "\n")
    return "\n".join(blocks)


def main(argv):
    ap = argparse.ArgumentParser(description="Make the translation template from every text a user can see.")
    ap.add_argument("strings", metavar="strings.txt", help="the string table's source, res/strings.txt")
    ap.add_argument("rc", metavar="quillon.rc", help="the resource script with the menus and dialogs")
    ap.add_argument("-o", dest="out", metavar="OUT.pot", required=True, help="the template to write")
    args = ap.parse_args(argv[1:])
    try:
        pot = make_pot(args.strings, args.rc)
    except ValueError as e:
        sys.exit(f"make_pot.py: {e}")
    out = Path(args.out)
    out.parent.mkdir(parents=True, exist_ok=True)
    if not out.exists() or out.read_text(encoding="utf-8") != pot:
        out.write_text(pot, encoding="utf-8")


if __name__ == "__main__":
    main(sys.argv)
