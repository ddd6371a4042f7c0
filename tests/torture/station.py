"""A station under torture: its directories, and the program run on them."""
import dataclasses
import json
import os
import pathlib
import shutil
import signal
import subprocess
import time

import system

INI = """[Default]
Энергосистема=PowerSystem
Субъект=Subject
Объект=Object
Источник=Source
Версия ПО=1.0
Версия аппаратной части=2.0
Модель=MK7.06
Версия ZU=1
Удалять исходные=0
Время ожидания={quiet}
Тип Comtrade CFF={cff}
Тип Comtrade BIN={binary}
Кодировка Comtrade UTF8=0
Переименовать сигналы Comtrade=1
Доп.индексы для имен сигналов=0
Тип Comtrade 1999={old}
[Torture]
"""
FORMS = {"cfg": (0, 0, 0), "cff": (1, 1, 0), "1999": (0, 1, 1)}  # CFF, binary, revision 1999
MODES = ["plain", "remove", "archive", "elsewhere"]  # the last: the archive is on another file system
COMMANDS = ["convert", "watch"]
PATIENCE = 20  # seconds for a run that takes milliseconds
HUNG = 1000  # stands for the exit code of a run that took longer


@dataclasses.dataclass(frozen=True)
class Case:
    """What is run: the command, what becomes of the recordings, the form of the records."""
    command: str = "convert"
    mode: str = "plain"
    form: str = "cfg"

    def puts_away(self):
        return self.mode != "plain"


@dataclasses.dataclass
class Run:
    """What a run of the program left behind: exit code, all texts, its JSON lines; and the shim's plan."""
    code: int
    text: str
    events: list
    plan: str = ""


def parse_events(text):
    events = []
    for line in text.splitlines():
        if line.startswith("{"):
            try:
                events.append(json.loads(line))
            except ValueError:  # cut by a kill
                pass
    return events


class Station:
    """The directories below `root`; `other`, if given, is a directory of another file system."""

    def __init__(self, root, program, shim, other=None):
        self.root = pathlib.Path(root)
        self.program, self.shim = program, shim
        self.input, self.out = self.root / "in", self.root / "out"
        self.tmp, self.state = self.root / "tmp", self.root / "state"
        self.archive_here = self.root / "archive"
        self.archive_there = pathlib.Path(other) if other else None
        self.log, self.data = self.root / "shim.log", self.root / "shim.data"
        self.ini = self.root / "ZuDrv.ini"
        self.case = Case()
        self.quiet = 0
        self.options = []
        self.patience = PATIENCE
        self.plan = None  # of the shim, for the run that was started last

    def set_up(self, case, quiet=0, options=()):
        """Empties everything, for another case or point."""
        self.case, self.quiet, self.options = case, quiet, list(options)
        self.root.mkdir(parents=True, exist_ok=True)
        for directory in [*self.directories(), self.archive_here]:
            directory.mkdir(parents=True, exist_ok=True)
            for child in os.scandir(directory):
                if child.is_dir(follow_symlinks=False):
                    shutil.rmtree(child.path)
                else:
                    os.unlink(child.path)
        cff, binary, old = FORMS[case.form]
        self.ini.write_text(INI.format(quiet=quiet, cff=cff, binary=binary, old=old), encoding="utf-8")

    @property
    def archive(self):
        return self.archive_there if self.case.mode == "elsewhere" else self.archive_here

    def directories(self):
        return [self.input, self.out, self.tmp, self.state, self.archive]

    def command(self, once=True):
        case = self.case
        words = [self.program, case.command]
        words += ["--json"] if case.command == "convert" else ["--state", self.state / "journal"]
        words += ["--once"] if case.command == "watch" and once else []
        words += ["--ini", self.ini, "--defaults", "Default", "--device", "Torture", "--out", self.out]
        words += {"plain": [], "remove": ["--remove-source"]}.get(case.mode, ["--archive", self.archive])
        return [str(word) for word in [*words, *self.options, self.input]]

    def environment(self, plan=None, kinds=None, data=False, only=None):
        self.plan = plan
        environment = {"PATH": os.environ.get("PATH", ""), "LC_ALL": "C.UTF-8", "TMPDIR": str(self.tmp),
                       "HOME": str(self.root)}
        if plan is not None:
            environment.update(LD_PRELOAD=str(self.shim), TORTURE_PLAN=plan, TORTURE_LOG=str(self.log),
                               TORTURE_DIRECTORIES=":".join(str(path) for path in only or self.directories()))
            if kinds:
                environment["TORTURE_KINDS"] = ",".join(kinds)
            if data:
                environment["TORTURE_DATA"] = str(self.data)
            for path in (self.log, self.data):
                path.unlink(missing_ok=True)
        return environment

    def start(self, plan=None, kinds=None, data=False, once=True, prefix=(), user=None, only=None):
        """The program, started; each kind of text goes to a file beside the directories. only: the paths that the
        shim watches."""
        with open(self.root / "stdout", "ab") as out, open(self.root / "stderr", "ab") as err:
            return subprocess.Popen([*prefix, *self.command(once)], stdin=subprocess.DEVNULL, stdout=out, stderr=err,
                                    env=self.environment(plan, kinds, data, only), cwd=self.root, user=user)

    def texts(self):
        text = ""
        for name in ("stdout", "stderr"):
            text += (self.root / name).read_text(encoding="utf-8", errors="replace")
        return text

    def forget_texts(self):
        for name in ("stdout", "stderr"):
            (self.root / name).write_bytes(b"")

    def result(self, child):
        """The end of a program that was started."""
        try:
            code = child.wait(self.patience)
        except subprocess.TimeoutExpired:
            child.kill()
            child.wait()
            code = HUNG
        text = self.texts()
        return Run(code, text, parse_events(text), self.plan)

    def run(self, plan=None, kinds=None, **words):
        """A run to its end; the words are those of start()."""
        self.forget_texts()
        return self.result(self.start(plan, kinds, **words))

    def run_with_stop(self, nth, kinds, action):
        """Stops the program before its n-th call, does action(), and lets it go on."""
        self.forget_texts()
        child = self.start(f"stop {nth}", kinds)
        _, status = os.waitpid(child.pid, os.WUNTRACED)
        if os.WIFSTOPPED(status):
            action()
            os.kill(child.pid, signal.SIGCONT)
        else:
            child.returncode = os.waitstatus_to_exitcode(status)
        return self.result(child)

    def calls(self):
        """The lines of the shim's log, as lists of fields."""
        if not self.log.exists():
            return []
        return [line.split("\t") for line in self.log.read_text(errors="surrogateescape").splitlines()]


class Places:
    """Rooms for stations, in memory where mounts are allowed; a second file system where there is one."""

    def __init__(self, directory, mounts):
        self.directory, self.mounts = pathlib.Path(directory), mounts
        self.made = []
        try:
            if mounts:
                system.mount_memory(self.directory)
        except PermissionError:  # a container that lets nobody mount
            self.mounts = False

    def other(self, name):
        """An empty directory on another file system than the rooms."""
        if self.mounts:
            path = self.directory / "other" / name
            path.mkdir(parents=True)
            system.mount_memory(path)
            return path
        for parent in ("/dev/shm", "/var/tmp", "/tmp"):
            if os.path.isdir(parent) and os.access(parent, os.W_OK) and \
                    os.stat(parent).st_dev != os.stat(self.directory).st_dev:
                path = pathlib.Path(parent) / f"zucmtr-torture-{os.getpid()}-{name}-{time.time_ns()}"
                path.mkdir()
                self.made.append(path)
                return path
        return None

    def small(self, name, size):
        """An empty directory with room for `size` bytes; only where mounts are allowed."""
        path = self.directory / "small" / name
        path.mkdir(parents=True, exist_ok=True)
        system.unmount(path)
        system.mount_memory(path, size)
        return path

    def close(self):
        for path in self.made:
            shutil.rmtree(path, ignore_errors=True)
        if self.mounts:
            system.unmount(self.directory)
