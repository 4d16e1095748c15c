#!/usr/bin/env python3
# Writes realistic UTF-8 log text of a given size (fixed seed, LF line ends, some non-ASCII words and long
# lines), so that every run of the open benchmark opens the same bytes. The file starts with a UTF-8
# byte-order mark: without one Wine's notepad reads the bytes as the ANSI code page and would show (and
# measure) other characters than the programs it is compared with.
import random
import sys

LEVELS = ["INFO", "INFO", "INFO", "DEBUG", "DEBUG", "WARN", "ERROR"]
MODULES = ["solver.mesh", "io.reader", "license", "ui.frame", "nls.catalog", "http.client", "scheduler"]
WORDS = ("element node pressure step converged residual iteration load case file opened written "
         "Größe Überlauf café naïve straße 温度 圧力 ошибка значение résultat élément").split()


def line(rng, n):
    stamp = "2026-11-%02d %02d:%02d:%02d.%03d" % (1 + n // 400000 % 28, n // 3600 % 24, n // 60 % 60, n % 60,
                                                  rng.randrange(1000))
    words = " ".join(rng.choice(WORDS) for _ in range(rng.choice((4, 8, 12, 40))))
    return "%s [%-5s] %-12s %s value=%d.%03d%s\n" % (stamp, rng.choice(LEVELS), rng.choice(MODULES), words,
                                                   rng.randrange(100000), rng.randrange(1000),
                                                   " 100%%" if n % 97 == 0 else "")


def main():
    path, size = sys.argv[1], int(sys.argv[2])
    rng = random.Random(20261122)
    out, total, n = [], 0, 0
    while total < size:
        text = line(rng, n).encode("utf-8")
        out.append(text)
        total += len(text)
        n += 1
    data = b"\xef\xbb\xbf" + b"".join(out)[:size - 3]
    # end on a whole line, never inside a UTF-8 sequence
    data = data[:data.rfind(b"\n") + 1]
    with open(path, "wb") as f:
        f.write(data)


if __name__ == "__main__":
    main()
