"""An AppArmor profile as apparmor_parser compiles it for the kernel, asked as the kernel asks it.

The rules are compiled into a machine whose states are reached by the bytes of a path and hold what is allowed there. Its
tables have the layout that flex writes: big-endian, each with an id and the width of its entries.
"""
import array
import re
import struct
import subprocess
import sys

MAGIC = b"\x1b\x5e\x78\x3d"
ACCEPT, BASE, CHECK, DEFAULT, CLASSES, NEXT = 1, 2, 3, 4, 5, 8
WIDTHS = {1: "B", 2: "H", 4: "I"}
SHARES_WITH_DEFAULT = 0x80000000  # of an entry of BASE: the state has what its default has, and more

# What a state allows to the owner of a file; to others the same 14 bits further up.
BITS = {"x": 0x01, "w": 0x02, "r": 0x04, "a": 0x08, "l": 0x10, "k": 0x20, "m": 0x40}
INHERITS = 0x200  # a program that is started keeps the profile
OF_OTHERS = 14


class Machine:
    def __init__(self, data, start):
        header, size = struct.unpack_from(">II", data, start + 4)
        self.tables = {}
        at = start + header
        while at < start + size:
            number, width, high, length = struct.unpack_from(">HHII", data, at)
            entries = array.array(WIDTHS[width])
            entries.frombytes(data[at + 12:at + 12 + length * entries.itemsize])
            if sys.byteorder == "little":
                entries.byteswap()
            self.tables[number] = entries
            at += (12 + length * entries.itemsize + 7) // 8 * 8

    def after(self, text, state=1):
        for byte in text:
            state = self.step(state, byte)
        return state

    def step(self, state, byte):
        symbol = self.tables[CLASSES][byte] if CLASSES in self.tables else byte
        while True:
            base = self.tables[BASE][state]
            at = (base & 0xFFFFFF) + symbol
            if self.tables[CHECK][at] == state:
                return self.tables[NEXT][at]
            state = self.tables[DEFAULT][state]
            if not base & SHARES_WITH_DEFAULT:
                return state

    def bits(self, state, is_owner):
        found = self.tables[ACCEPT][state]
        return found & 0x3FFF if is_owner else found >> OF_OTHERS & 0x3FFF


class Profile:
    """The rules for files. folders: searched for includes before the system's own."""

    def __init__(self, path, folders, compiled):
        command = ["apparmor_parser", "--skip-kernel-load", "--skip-cache", "--abort-on-error",
                   # What this machine's kernel lacks would be left out otherwise.
                   "--kernel-features=/etc/apparmor.d/abi/3.0"]
        for folder in [*folders, "/etc/apparmor.d"]:
            command += ["-I", str(folder)]
        ran = subprocess.run([*command, f"--ofile={compiled}", str(path)], capture_output=True, text=True, check=False)
        if ran.returncode != 0:
            raise AssertionError(f"{path} is not taken by apparmor_parser:\n{ran.stderr}")
        data = compiled.read_bytes()
        # The last machine is that of files; those before it have the rules for sockets, signals and the like.
        self.files = Machine(data, [found.start() for found in re.finditer(re.escape(MAGIC), data)][-1])

    def allowed(self, path, is_owner=False):
        """Letters of what may be done with the path; that of a directory ends in a slash."""
        bits = self.files.bits(self.files.after(path.encode()), is_owner)
        return {letter for letter, bit in BITS.items() if bits & bit}

    def keeps_profile(self, path):
        return bool(self.files.bits(self.files.after(path.encode()), False) & INHERITS)

    def allows_link(self, name, target):
        """Whether name may be made a further name of the file target: never one that gives more rights to it."""
        pair = self.files.after(name.encode() + b"\0")
        bits = self.files.bits(self.files.after(target.encode(), pair), False)
        return bool(bits & BITS["l"]) and self.allowed(name) <= self.allowed(target)
