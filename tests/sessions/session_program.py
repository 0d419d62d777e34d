"""A running scripted host: one command, one answer."""

import json
import os
import pathlib
import pwd
import subprocess

SOURCES = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = os.environ.get("CV_PANEL_SESSION", str(SOURCES / "build" / "bin" / "corvane-panel-session"))
DEADLINE = 120  # seconds until a program must have ended


def as_user(name):
    """What starts a process as this user; nothing for None."""
    return {} if name is None else {"user": name, "group": pwd.getpwnam(name).pw_gid, "extra_groups": []}


class SessionProgram:
    """Runs in the source folder, so that sessions may name resources from there."""

    def __init__(self, arguments=(), environment=None, user=None):
        self.process = subprocess.Popen(
            [PROGRAM, *arguments],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            cwd=SOURCES,
            env={**os.environ, **(environment or {})},
            **as_user(user),
        )
        self.ended = False

    def answer_to_line(self, line):
        """The answer to one line, while the program still waits for more: answers are flushed one by one."""
        self.process.stdin.write(line if isinstance(line, bytes) else line.encode())
        self.process.stdin.write(b"\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline()
        if not answer:
            raise AssertionError("the program ended: " + self.process.stderr.read().decode(errors="replace"))
        return json.loads(answer)

    def answer(self, do, **members):
        return self.answer_to_line(json.dumps({"do": do, **members}))

    def end(self):
        """Closes its input; the exit status and what is left on its standard error. Fails where it does not end: a
        program that is killed tells neither of its leaks nor of the lines that it ran."""
        self.ended = True
        try:
            _, errors = self.process.communicate(timeout=DEADLINE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            _, errors = self.process.communicate()
            raise AssertionError("the program did not end with its input: " + errors.decode(errors="replace")) from None
        return self.process.returncode, errors.decode(errors="replace")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        """Whoever has not ended it expects that it ends well."""
        if not self.ended:
            status, errors = self.end()
            if status != 0:
                raise AssertionError("the program ended with status %d: %s" % (status, errors))
