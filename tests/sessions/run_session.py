#!/usr/bin/env python3
"""Replays a session file and compares the answers with what stands in the file.

A session file is what the scripted host reads: a command a line. To the host, lines that begin with `#` are comments;
here some of them say what is expected of the command above them:

  #= PATTERN   the answer holds this JSON: of objects the members that are named, lists and all else equal
  #~ TEXT      the answer's error holds this text
  #! OBJECT    what follows is read by a new process: {"arguments": [...], "environment": {...}, "status": 0}

A command without `#=` and `#~` must succeed. ${OUT} stands for a temporary folder. The program runs in the source
folder.
"""

import json
import pathlib
import sys
import tempfile

from session_program import SessionProgram


class Mismatch(Exception):
    """What differs, in words."""


def compare(actual, pattern, where="the answer"):
    if isinstance(pattern, dict) and isinstance(actual, dict):
        for name, value in pattern.items():
            if name not in actual:
                raise Mismatch("%s lacks %r: %s" % (where, name, json.dumps(actual, ensure_ascii=False)))
            compare(actual[name], value, "%s.%s" % (where, name))
    elif isinstance(pattern, list) and isinstance(actual, list) and len(pattern) == len(actual):
        for index, value in enumerate(pattern):
            compare(actual[index], value, "%s[%d]" % (where, index))
    elif actual != pattern or isinstance(actual, bool) != isinstance(pattern, bool):
        texts = tuple(json.dumps(value, ensure_ascii=False) for value in (actual, pattern))
        raise Mismatch("%s is %s, expected %s" % (where, *texts))


class Replay:
    def __init__(self, path, folder):
        self.path, self.folder, self.program, self.ending = path, folder, None, {}
        self.problems = 0

    def run(self):
        lines = self.path.read_text(encoding="utf-8").replace("${OUT}", self.folder).split("\n")
        at = 0
        while at < len(lines):
            line = lines[at]
            at += 1
            if line.startswith("#! "):
                self.begin(json.loads(line[3:]))
            elif self.program is None:
                self.begin({})
            if line.strip() and not line.lstrip().startswith("#"):
                end = at
                while end < len(lines) and lines[end].startswith(("#= ", "#~ ")):
                    end += 1
                self.command(at, line, lines[at:end])
            elif not line.startswith(("#! ", "#= ", "#~ ")):
                self.program.process.stdin.write(line.encode() + b"\n")  # the host skips it
        self.finish()
        return self.problems

    def begin(self, how):
        self.finish()
        self.ending = how
        self.program = SessionProgram(how.get("arguments", ()), how.get("environment"))

    def finish(self):
        if self.program is None:
            return
        status, errors = self.program.end()
        if status != self.ending.get("status", 0):
            self.tell(0, "the program ended with status %d: %s" % (status, errors))
        self.program = None

    def command(self, number, line, expectations):
        answer = self.program.answer_to_line(line)
        patterns = [json.loads(each[3:]) for each in expectations if each.startswith("#= ")]
        texts = [each[3:] for each in expectations if each.startswith("#~ ")]
        try:
            expected_ok = not texts and all(pattern.get("ok", True) for pattern in patterns)
            if expected_ok and "error" in answer:
                raise Mismatch("the command failed: %s" % answer["error"])
            compare(answer, {"ok": expected_ok})
            if not expected_ok and not (isinstance(answer.get("error"), str) and answer["error"].endswith(".")):
                raise Mismatch("an error is told in a sentence")
            for pattern in patterns:
                compare(answer, pattern)
            for text in texts:
                if text not in answer["error"]:
                    raise Mismatch("the error %r does not hold %r" % (answer["error"], text))
        except Mismatch as mismatch:
            self.tell(number, "%s\n    %s" % (mismatch, line))

    def tell(self, number, problem):
        self.problems += 1
        print("%s:%d: %s" % (self.path, number, problem))


def main():
    if len(sys.argv) != 2:
        sys.exit("Usage: run_session.py SESSION.jsonl")
    with tempfile.TemporaryDirectory(prefix="session-") as folder:
        sys.exit(1 if Replay(pathlib.Path(sys.argv[1]), folder).run() else 0)


if __name__ == "__main__":
    main()
