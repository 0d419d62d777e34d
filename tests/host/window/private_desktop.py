"""A desktop of a test's own: a display without a screen, a session bus, and an assistive technology's view of a program.

No window manager runs: whoever opens a window gives it the keyboard. A test that is killed leaves no process behind.
"""

import contextlib
import ctypes
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  only the version above is the one that is meant

DEADLINE = 60  # seconds for a state to be reached, on a machine that is busy with other things
PAUSE = 0.02  # seconds between two looks
PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36
LIBC = ctypes.CDLL(None)


def wait_for(what, look):
    """The first answer that is true; what fails in between (an object that has gone, a late answer) is looked at again."""
    end, seen = time.monotonic() + DEADLINE, None
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass  # what was told of windows meanwhile
        try:
            seen = look()
            if seen:
                return seen
        except GLib.Error as error:
            seen = error
        time.sleep(PAUSE)
    raise AssertionError(f"waited {DEADLINE} s for {what}; last seen: {seen!r}")


def die_with_the_test():
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def asked_of_xdotool(*words):
    """Its answer; empty where it fails, as for a window that has gone meanwhile."""
    return subprocess.run(["xdotool", *words], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False,
                          encoding="utf-8").stdout


def children_of(process):
    text = pathlib.Path(f"/proc/{process}/task/{process}/children").read_text(encoding="ascii")
    return [int(child) for child in text.split()]


def end_all_children():
    """Also those whose parents ended before them: they have become ours."""
    while children := children_of(os.getpid()):
        for child in children:
            os.kill(child, signal.SIGKILL)
            os.waitpid(child, 0)


class PrivateDesktop:
    """Sets the environment of this process, for the clients that it starts and for the library that reads their windows."""

    def __init__(self):
        self.kept = contextlib.ExitStack()
        self.folder = pathlib.Path(self.kept.enter_context(tempfile.TemporaryDirectory(prefix="desktop-")))
        LIBC.prctl(PR_SET_CHILD_SUBREAPER, 1)
        self.kept.callback(end_all_children)
        signal.signal(signal.SIGTERM, lambda *_: sys.exit("ended from outside"))
        try:
            self.set_folders()
            os.environ["DISPLAY"] = ":" + self.first_line(
                ["Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"])
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.first_line(
                ["dbus-daemon", "--session", "--nofork", "--print-address=1"])
        except BaseException:
            self.end()
            raise

    def end(self):
        self.kept.close()

    def set_folders(self):
        for name in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"):
            place = self.folder / name.lower()
            place.mkdir(mode=0o700)
            os.environ[name] = str(place)
        for name in ("WAYLAND_DISPLAY", "XAUTHORITY", "AT_SPI_BUS_ADDRESS", "LC_ALL", "SESSION_MANAGER"):
            os.environ.pop(name, None)
        os.environ.update(LANG="C.UTF-8", LANGUAGE="en", QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")

    def first_line(self, command):
        """What a server writes when it can be reached."""
        with open(self.folder / (command[0] + ".log"), "wb") as log:
            server = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=log, preexec_fn=die_with_the_test)
        self.kept.callback(server.wait)
        self.kept.callback(server.kill)
        self.kept.callback(server.stdout.close)
        line = server.stdout.readline().decode().strip()
        if not line:
            raise AssertionError(pathlib.Path(log.name).read_text(encoding="utf-8", errors="replace"))
        return line


class Seen:
    """What an assistive technology is told of one object. Asked anew each time: nothing of it is remembered."""

    def __init__(self, accessible):
        self.accessible = accessible

    def __eq__(self, other):
        return isinstance(other, Seen) and self.accessible == other.accessible

    def __repr__(self):
        return f"{self.role} '{self.name}'"

    def asked(self):
        self.accessible.clear_cache()
        return self.accessible

    @property
    def role(self):
        return self.asked().get_role_name()

    @property
    def name(self):
        return self.asked().get_name()

    def has(self, state):
        return self.asked().get_state_set().contains(state)

    def children(self):
        for index in range(self.asked().get_child_count()):
            child = self.accessible.get_child_at_index(index)
            if child is not None:
                yield Seen(child)

    def label(self):
        """The words of the label that stands at it; empty without one."""
        for relation in self.accessible.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                return " ".join(relation.get_target(index).get_name() for index in range(relation.get_n_targets()))
        return ""

    def called(self):
        """What a screen reader says it is, without what it is set to: a pop-up list's own name is its value."""
        return (self.label() or ("" if self.role == "combo box" else self.name)).strip().rstrip(":")

    def widget(self):
        """What has the keyboard where it is told of a list's current item: the list, or the pop-up list that it belongs to."""
        if self.role != "list item":
            return self
        holder = Seen(self.accessible.get_parent())
        above = Seen(holder.accessible.get_parent())
        return above if above.role == "combo box" else holder

    def value(self):
        return Atspi.Value.get_current_value(self.accessible)


class ProgramOnTheDesktop:
    """A program with windows, seen through AT-SPI and led by keys alone. `with` ends it."""

    def __init__(self, desktop, command):
        self.focused = None
        self.listener = Atspi.EventListener.new(self.hear_focus)
        self.listener.register("object:state-changed:focused")
        self.output = desktop.folder / "program.log"
        with open(self.output, "wb") as output:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                            preexec_fn=die_with_the_test)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.listener.deregister("object:state-changed:focused")
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()

    def hear_focus(self, event):
        with contextlib.suppress(GLib.Error):  # the object may have gone before its news came
            if event.detail1 and event.source.get_process_id() == self.process.pid:
                self.focused = Seen(event.source).widget()

    def exit_status(self):
        try:
            return self.process.wait(DEADLINE)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"the program did not end: {list(self.shown())}") from None

    def windows(self):
        """Those that are shown now, the oldest first."""
        assert self.process.poll() is None, self.output.read_text(encoding="utf-8", errors="replace")
        for program in Seen(Atspi.get_desktop(0)).children():
            if program.accessible.get_process_id() == self.process.pid:
                yield from (window for window in program.children() if window.has(Atspi.StateType.SHOWING))

    def shown(self, within=None):
        """Every object that is shown, a window before what stands in it; what a closed list would offer is not shown."""
        for seen in self.windows() if within is None else within.children():
            if seen.has(Atspi.StateType.SHOWING):
                yield seen
                if seen.role != "combo box":
                    yield from self.shown(seen)

    def find(self, role, name):
        """The object shown now that is called so."""
        return wait_for(f"{role} '{name}'", lambda: next(
            (seen for seen in self.shown() if seen.role == role and seen.called() == name), None))

    def read_label(self, words):
        """Waits until a label with these words is shown."""
        wait_for(f"the words '{words}'", lambda: words in [seen.name for seen in self.shown() if seen.role == "label"])

    @staticmethod
    def selected_in(items):
        return next((item.name for item in items.children() if item.has(Atspi.StateType.SELECTED)), None)

    def enter_window(self, name):
        """Gives a window the keyboard, as a window manager does when it opens."""
        def entered():
            for window in asked_of_xdotool("search", "--onlyvisible", "--pid", str(self.process.pid)).split():
                if asked_of_xdotool("getwindowname", window).startswith(name):
                    asked_of_xdotool("windowfocus", window)
            return next((each for each in self.windows()
                         if each.name == name and each.has(Atspi.StateType.ACTIVE)), None)
        window = wait_for(f"the window '{name}'", entered)
        # What was told of it may have been told before the program was on the bus: look.
        self.focused = wait_for(f"an object with the keyboard in '{name}'", lambda: self.look_for_focus(window))
        return window

    def look_for_focus(self, window):
        """A list's current item and the tab in front say that they have the keyboard even when it is elsewhere."""
        return next((seen for seen in self.shown(window) if seen.has(Atspi.StateType.FOCUSED)
                     and seen.role not in ("list item", "page tab")), None)

    def press(self, *keys):
        subprocess.run(["xdotool", "key", *keys], check=True)

    def move_to(self, role, name):
        """Tab, as often as it takes to come to the object that is called so (whatever it is called: None)."""
        passed = []
        while not (self.focused.role == role and name in (None, self.focused.called())):
            assert self.focused not in passed[1:], f"Tab does not reach {role} '{name}' but {passed}"
            passed.append(self.focused)
            self.press("Tab")
            wait_for(f"Tab to leave {self.focused}", lambda: self.focused != passed[-1])
        return self.focused

    def show_tab(self, name):
        """Goes to the row of tabs and along it to the tab that is called so."""
        tabs = self.move_to("page tab list", None)
        names = [tab.name for tab in tabs.children() if tab.role == "page tab"]
        here, there = names.index(tabs.name), names.index(name)
        self.press(*["Right" if here < there else "Left"] * abs(there - here))
        wait_for(f"the tab '{name}'", lambda: tabs.name == name)
