# SPDX-License-Identifier: GPL-3.0-or-later
"""The real program: its own home folder, its start, its voice on standard error, its end."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import uuid

from . import processes
from .settings import Settings
from .waiting import NeverCameTrue, wait_until

ROOT = pathlib.Path(__file__).resolve().parents[3]
BINARY = pathlib.Path(os.environ.get("KIVANDRA_PROGRAM", ROOT / "build" / "release" / "bin" / "kivandra"))

# Lines by which the program, its libraries or the language's run time complain.
COMPLAINT = re.compile(r"-(WARNING|CRITICAL|ERROR) \*\*|\*\* (WARNING|CRITICAL|ERROR) \*\*|runtime error|Sanitizer|"
                       r"terminate called|Assertion|assertion .* failed|\(null\) pointer")
# The engine's page processes speak for themselves: none of our code runs in them, and their number is that inside
# their cage, so a small one.
ENGINES_OWN = re.compile(r"\(process:\d{1,2}\): GLib-GObject-CRITICAL")

END_SECONDS = 30


class Home:
    """A home folder that nobody else uses."""

    def __init__(self, like=None):
        """Empty, or with the data of another home."""
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="home-"))
        for name in ("data", "cache", "config", "downloads"):
            (self.path / name).mkdir()
        (self.path / "runtime").mkdir(mode=0o700)
        if like is not None:
            shutil.copytree(pathlib.Path(like) / "data", self.path / "data", dirs_exist_ok=True)
        self.settings = Settings(self.path / "data" / "kivandra" / "registry.db")

    def environment(self):
        return {
            "HOME": str(self.path),
            "XDG_DATA_HOME": str(self.path / "data"),
            "XDG_CACHE_HOME": str(self.path / "cache"),
            "XDG_CONFIG_HOME": str(self.path / "config"),
            "XDG_RUNTIME_DIR": str(self.path / "runtime"),
            "XDG_DOWNLOAD_DIR": str(self.path / "downloads"),
        }

    def files(self):
        """Every file below, as paths relative to the home."""
        return {str(path.relative_to(self.path)) for path in self.path.rglob("*") if path.is_file()}

    def remove(self):
        shutil.rmtree(self.path, ignore_errors=True)


class Program:
    """One run of the program."""

    def __init__(self, display, home, arguments=(), environment=(), binary=BINARY):
        self.home = home
        self._mark = f"KIVANDRA_DESKTOP_TEST={uuid.uuid4()}"
        surroundings = {**display.environment, **home.environment(), "GSK_RENDERER": "cairo"}
        # Names of real hosts lead nowhere from here, so no test reaches out of this machine.
        surroundings.update({"http_proxy": "http://127.0.0.1:9", "https_proxy": "http://127.0.0.1:9",
                             "no_proxy": "localhost,127.0.0.1,::1,.localhost"})
        surroundings.update(dict([self._mark.split("=")]))
        surroundings.update(environment)
        self._voice_path = home.path / f"voice-{uuid.uuid4()}"
        self.started = time.monotonic()
        with open(self._voice_path, "wb") as voice:
            self._process = subprocess.Popen([str(binary), *arguments], env=surroundings, cwd=str(home.path),
                                             stdin=subprocess.DEVNULL, stdout=voice, stderr=voice,
                                             preexec_fn=processes.die_with_parent)
        self.pid = self._process.pid
        self.killed = False  # what its orphans say then is no fault

    def voice(self):
        """All that the program has said so far."""
        return self._voice_path.read_text(errors="replace")

    def complaints(self, first=0):
        """The lines of voice()[first:] that a person should not have to see."""
        return [line for line in self.voice()[first:].splitlines()
                if COMPLAINT.search(line) and not ENGINES_OWN.match(line)]

    def runs(self):
        return self._process.poll() is None

    def wait_end(self, seconds=END_SECONDS):
        """Waits until the program has ended; gives its exit code."""
        wait_until(lambda: not self.runs(), "the program ends", seconds)
        return self._process.returncode

    def web_processes(self):
        """The engine's processes that hold pages."""
        return [pid for pid in processes.descendants(self.pid) if "WebKitWebProcess" in processes.name_of(pid)]

    def crash(self):
        """Ends the program's own process at once, as a crash would; its helpers must go by themselves."""
        self.killed = True
        self._process.kill()
        self._process.wait(END_SECONDS)

    def left_behind(self):
        """Processes of this run that live after its end."""
        return processes.marked(self._mark)

    def wait_nothing_left(self, seconds=END_SECONDS):
        try:
            wait_until(lambda: not self.left_behind(), "no process is left behind", seconds)
        except NeverCameTrue as error:
            names = [" ".join(processes.words_of(pid))[:120] for pid in self.left_behind()]
            raise AssertionError(f"{error}: {names}") from None

    def kill(self):
        """Ends what is left of the run, whatever its state."""
        if self.runs():
            self.killed = True
            self._process.send_signal(signal.SIGKILL)
            self._process.wait(END_SECONDS)
        for pid in self.left_behind():
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
