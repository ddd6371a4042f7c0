"""What a program and its children do with files, as strace sees it: the accesses that AppArmor would judge."""
import os
import re
import subprocess

CALLS = "%file,mmap,flock,fcntl,connect,sendto"
WRITES = ("rename", "renameat", "renameat2", "unlink", "unlinkat", "rmdir", "mkdir", "mkdirat", "symlink", "symlinkat",
          "chmod", "fchmodat", "chown", "fchownat", "lchown", "truncate", "utimensat", "mknod", "mknodat")
DIRECTORIES = ("rmdir", "mkdir", "mkdirat")
LINE = re.compile(r"(\w+)\((.*)\)\s+= (-?\d+)(?:<(.*?)>)?", re.DOTALL)
PATH = re.compile(r'(?:(?:AT_FDCWD|\d+)<([^>]*)>, )?"((?:[^"\\]|\\.)*)"')
OPENED = re.compile(r"\b(O_[A-Z_|]+)")
FILE = re.compile(r"\b\d+<([^>]*)>")


def plain(text):
    """strace writes what is not ASCII as octal escapes."""
    return text.encode().decode("unicode_escape").encode("latin-1").decode()


def traced(command, traces, **options):
    """Runs the command; afterwards the directory has a file for each of its processes."""
    traces.mkdir()
    return subprocess.run(["strace", "-ff", "-qq", "-y", "--signal=none", f"--trace={CALLS}", "-o", traces / "of", *command],
                          capture_output=True, check=False, **options)


class Accesses:
    """wanted: of each path, the letters of a rule that it needs. links: name and file of each hard link."""

    def __init__(self, traces):
        self.wanted = {}
        self.links = []
        self.executed = set()
        self.directories = set()
        lines = [line for trace in sorted(traces.iterdir()) for line in trace.read_text().splitlines()]
        for line in lines:
            if call := LINE.match(line):
                self.directories.update(self.made(call))
        for line in lines:
            call = LINE.match(line)
            if call and (int(call[3]) >= 0 or call[1] in ("connect", "sendto")):
                self.judge(call[1], call[2], call[4])

    def made(self, call):
        if call[1] in DIRECTORIES and int(call[3]) >= 0:
            yield self.paths(call[2])[-1]

    def paths(self, arguments):
        found = []
        for place, path in PATH.findall(arguments):
            path = plain(path)
            if not path.startswith("/"):
                assert place, f"a relative path that cannot be placed: {arguments}"
                path = os.path.join(plain(place), path)
            found.append(os.path.normpath(path))
        return found

    def want(self, path, letters):
        if path in self.directories or os.path.isdir(path):
            path = path.rstrip("/") + "/"
        self.wanted.setdefault(path, set()).update(letters)

    def judge(self, name, arguments, result):
        if name in ("open", "openat", "creat"):
            self.opened(OPENED.findall(arguments)[-1].split("|"), plain(result))
        elif name == "mmap" and "PROT_EXEC" in arguments and (file := FILE.search(arguments)):
            self.want(plain(file[1]), "m")
        elif name == "flock" or (name == "fcntl" and re.search("SETLKW?.*F_(RD|WR)LCK", arguments)):
            self.want(plain(FILE.search(arguments)[1]), "k")
        elif name == "execve":
            # The kernel judges the file that the links lead to.
            program = os.path.realpath(self.paths(arguments.split(", [")[0])[0])
            self.executed.add(program)
            self.want(program, "x")
        elif name == "linkat":
            target, link = self.paths(arguments)
            # A file without a name is in the directory of the name that it gets.
            self.links.append((link, os.path.dirname(link) + "/#1" if target.startswith("/proc/") else target))
        elif name in ("connect", "sendto"):
            if socket := re.search('sun_path="([^"]*)"', arguments):
                self.want(plain(socket[1]), "w")
        elif name in WRITES:
            # What a symbolic link leads to is no access.
            for path in self.paths(arguments)[-1 if name.startswith("symlink") else 0:]:
                self.want(path, "rw" if name.startswith("rename") else "w")

    def opened(self, flags, path):
        if "O_PATH" in flags:
            return
        letters = {"O_RDONLY": "r", "O_WRONLY": "w", "O_RDWR": "rw"}[flags[0]]
        if "O_DIRECTORY" in flags:
            self.directories.add(path)
        self.want(path, letters)
