"""Machines for tests: namespaces that share this machine's files, each with a network card, processes and an sshd of its own.

It needs root, and a mount, process and network namespace around it, made by scripts/check-fleet.sh: with that all that is
made here goes, however the test ends.
"""
import os
import pathlib
import re
import signal
import subprocess
import time

PATIENCE = 240  # seconds, of a busy machine
BRIDGE = "10.77.0.1"

# What becomes of a machine's first process. It waits for its network card.
_BOOT = """
set -eu
hostname "$1"
mount -t tmpfs tmpfs /run
mkdir /run/sshd
mount -t tmpfs tmpfs /usr/local/bin
ln -s "$2" /usr/local/bin/zucmtr
read -r connected
exec /usr/sbin/sshd -D -e -f "$3"
"""


def run(*words, **options):
    return subprocess.run([str(word) for word in words], check=True, timeout=PATIENCE, **options)


def wait_for(condition, about, patience=PATIENCE):
    end = time.monotonic() + patience
    while not condition():
        assert time.monotonic() < end, f"in vain: {about}"
        time.sleep(0.02)


class Network:
    """A bridge, an administrator with a home of their own, and the names of the machines."""

    def __init__(self, place, names):
        self.place, self.names = place, names
        self.home = place / "home"
        (self.home / ".ssh").mkdir(parents=True, mode=0o700)
        self.covered = []
        users = pathlib.Path("/etc/passwd").read_text(encoding="utf-8")
        self._cover("/etc/passwd", re.sub(r"(?m)^(root:.*):[^:]*:[^:]*$", rf"\1:{self.home}:/bin/sh", users))
        self._cover("/etc/hosts", f"127.0.0.1 localhost\n{BRIDGE} db head\n" +
                    "".join(f"{self.address(name)} {name}\n" for name in names))
        run("mount", "--bind", "/dev/null", "/dev/null")  # so that nobody can replace it
        run("mount", "-t", "tmpfs", "tmpfs", "/run")
        self.covered += ["/dev/null", "/run"]
        run("hostname", "head")
        run("ip", "link", "set", "lo", "up")
        run("ip", "link", "add", "machines", "type", "bridge")
        run("ip", "addr", "add", f"{BRIDGE}/24", "dev", "machines")
        run("ip", "link", "set", "machines", "up")
        run("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", self.home / ".ssh/id_ed25519")
        (self.home / ".ssh/authorized_keys").write_bytes((self.home / ".ssh/id_ed25519.pub").read_bytes())

    def _cover(self, file, text):
        """Gives a file of the system another text, in this namespace alone."""
        own = self.place / pathlib.Path(file).name
        own.write_text(text, encoding="utf-8")
        own.chmod(0o644)
        run("mount", "--bind", own, file)
        self.covered.append(file)

    def remove(self):
        run("ip", "link", "delete", "machines")
        for place in reversed(self.covered):
            run("umount", "--lazy", place)

    def address(self, name):
        return f"10.77.0.{11 + self.names.index(name)}"


class Machine:
    """One of the network's machines; `program` is installed there."""

    def __init__(self, network, name, program):
        self.network, self.name, self.program = network, name, program
        self.place = network.place / name
        self.place.mkdir()
        self.process = self.first = None
        key = self.place / "host_key"
        run("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", key)
        with open(network.home / ".ssh/known_hosts", "a", encoding="utf-8") as known:
            known.write(f"{name} {key.with_suffix('.pub').read_text(encoding='utf-8')}")
        (self.place / "tmp").mkdir()
        (self.place / "sshd_config").write_text(f"HostKey {key}\nPidFile none\nUsePAM no\nPasswordAuthentication no\n"
                                                f"SetEnv TMPDIR={self.place}/tmp\n", encoding="utf-8")

    def start(self):
        """Does nothing if it is running."""
        if self.process is not None and self.process.poll() is None:
            return
        with open(self.place / "log", "a", encoding="utf-8") as log:
            self.process = subprocess.Popen(
                ["unshare", "--mount", "--pid", "--net", "--uts", "--fork", "--kill-child", "--mount-proc", "sh", "-c", _BOOT,
                 "sh", self.name, self.program, self.place / "sshd_config"], stdin=subprocess.PIPE, stdout=log, stderr=log,
                text=True)
        children = pathlib.Path(f"/proc/{self.process.pid}/task/{self.process.pid}/children")
        wait_for(lambda: children.read_text().strip(), "the first process of a machine")
        self.first = int(children.read_text())
        # Its name shows that it is in its own namespaces.
        wait_for(lambda: self.inside("hostname", stdout=subprocess.PIPE, text=True).stdout.strip() == self.name, "its start")
        run("ip", "link", "add", f"to-{self.name}", "type", "veth", "peer", "name", "card", "netns", self.first)
        run("ip", "link", "set", f"to-{self.name}", "master", "machines", "up")
        for words in (("link", "set", "lo", "up"), ("addr", "add", f"{self.network.address(self.name)}/24", "dev", "card"),
                      ("link", "set", "card", "up")):
            self.inside("ip", *words)
        self.process.stdin.write("connected\n")
        self.process.stdin.close()
        wait_for(self.answers, f"{self.name}: {self.place / 'log'}")

    def answers(self):
        return subprocess.run(["ssh", "-o", "BatchMode=yes", "-o", "ConnectTimeout=2", self.name, "true"], capture_output=True,
                              check=False).returncode == 0

    def inside(self, *words, **options):
        """Runs a command there."""
        return run("nsenter", "-t", self.first, "-m", "-p", "-n", "-u", *words, **options)

    def lose(self):
        """Nothing more comes from the machine, not even the end of a connection; then its power fails."""
        run("ip", "link", "delete", f"to-{self.name}")
        self.stop()

    def stop(self):
        if self.process is not None and self.process.poll() is None:
            os.kill(self.first, signal.SIGKILL)
            self.process.wait(PATIENCE)
