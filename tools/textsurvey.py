#!/usr/bin/env python3
"""Walks, searches and loads a folder tree with TextFileSurvey and compares the results with find,
grep -r and Python's decoding.

usage: tools/textsurvey.py <TextFileSurvey> <folder> <word> [<largest file in bytes>]

The walk must list what `find -type f` lists plus the links to files (`find -xtype f -type l`).
The search must find the word in every valid UTF-8 file without NUL bytes that `grep -rlF` finds
it in. Every valid UTF-8 file must load as Python decodes it (same lines, line ends counted as
one), and every file listed must save back to its own bytes unless its line ends are mixed.
"""
import os
import subprocess
import sys
import tempfile
import zlib


def run(args):
    return subprocess.run(args, stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False).stdout


def lines_of(output, tag):
    prefix = tag.encode() + b"\t"
    return [line[len(prefix):] for line in output.split(b"\n") if line.startswith(prefix)]


def is_text(data):
    if b"\0" in data:
        return False
    try:
        data.decode("utf-8")
        return True
    except UnicodeDecodeError:
        return False


def main():
    tool, folder, word = sys.argv[1], sys.argv[2], sys.argv[3]
    largest = int(sys.argv[4]) if len(sys.argv) > 4 else 8 << 20
    folder_b = os.fsencode(folder)

    walked = set(lines_of(run([tool, "walk", folder]), "F"))
    found = set(run(["find", folder_b, "(", "-type", "f", "-o", "-type", "l", "-xtype", "f", ")",
                     "-print0"]).split(b"\0")) - {b""}
    print(f"walk: {len(walked)} listed, find {len(found)}; only in walk {len(walked - found)}, "
          f"only in find {len(found - walked)}")
    for path in sorted(found ^ walked)[:10]:
        print("  differs:", path)

    hits = set(lines_of(run([tool, "search", folder, word]), "H"))
    grep_hits = set(run(["grep", "-rlFZ", "--", word.encode(), folder_b]).split(b"\0")) - {b""}
    grep_text = set()
    for path in grep_hits:
        try:
            with open(path, "rb") as file:
                if is_text(file.read()):
                    grep_text.add(path)
        except OSError:
            pass
    missed = grep_text - hits
    extra = hits - grep_hits
    extra_text = sum(1 for path in extra if is_text(open(path, "rb").read()))
    print(f"search '{word}': {len(hits)} files with hits, grep -r {len(grep_hits)} "
          f"({len(grep_text)} of them UTF-8 text); text files missed {len(missed)}, "
          f"hits grep lacks {len(extra)} ({extra_text} of them UTF-8 text)")
    for path in sorted(missed)[:10]:
        print("  missed:", path)

    regular = sorted(p for p in walked if os.path.isfile(p) and os.path.getsize(p) <= largest)
    with tempfile.TemporaryDirectory() as scratch:
        list_path = os.path.join(scratch, "list")
        with open(list_path, "wb") as file:
            file.write(b"".join(p + b"\n" for p in regular if b"\n" not in p))
        loads = lines_of(run([tool, "load", list_path, scratch]), "L")
    text = same_text = changed = mixed = mixed_text = failed = escaped = 0
    for record in loads:
        fields = record.split(b"\t")
        path = fields[0]
        if fields[1] == b"failed":
            failed += 1
            print("  failed:", path)
            continue
        others, invalid, crc, result = int(fields[3]), int(fields[4]), int(fields[6]), fields[7]
        escaped += invalid > 0
        with open(path, "rb") as file:
            data = file.read()
        if others:
            mixed += 1
            mixed_text += is_text(data)
        elif result != b"same":
            changed += 1
            print("  changed:", path)
        if is_text(data):
            text += 1
            # The mark of a UTF-8 file is not text, as "utf-8-sig" reads it.
            decoded = data.decode("utf-8-sig").replace("\r\n", "\n").replace("\r", "\n")
            if zlib.crc32(decoded.encode("utf-16-le", "surrogatepass")) == crc:
                same_text += 1
            elif text - same_text <= 10:
                print("  text differs:", path)
    print(f"load: {len(loads)} files up to {largest} bytes; {failed} failed; saved back byte for byte "
          f"{len(loads) - failed - changed - mixed}, changed {changed}, mixed line ends {mixed} "
          f"({mixed_text} of them UTF-8 text), "
          f"with bytes kept as escapes {escaped}; UTF-8 text {text}, as Python decodes it {same_text}")


if __name__ == "__main__":
    main()
