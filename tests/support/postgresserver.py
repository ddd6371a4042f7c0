"""A PostgreSQL server of Debian's for a Python test, in a directory of its own (for C++: postgresserver.h)."""
import os
import pathlib
import pwd
import shutil
import signal
import subprocess
import tempfile
import time

PATIENCE = 120  # seconds, of a busy machine


def programs():
    """The directory of the newest server's programs."""
    versions = sorted(pathlib.Path("/usr/lib/postgresql").glob("*/bin/initdb"), key=lambda path: int(path.parts[-3]))
    assert versions, "no server is installed; run scripts/install-packages.sh test"
    return versions[-1].parent


class PostgresServer:
    """Reached by a socket in `directory`, and under the addresses of `listen`, with a self-signed certificate, by the
    rules of pg_hba.conf in `hba`. Its superuser is `postgres`."""

    def __init__(self, listen="", hba="local all all trust\n"):
        self.listen = listen
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="zucmtr-postgres-"))
        self.process = None
        # A server does not run as root, and ends with this program, however that ends.
        self.privileges = ["setpriv", "--pdeathsig", "INT"]
        if os.geteuid() == 0:
            account = pwd.getpwnam("postgres")
            os.chown(self.directory, account.pw_uid, account.pw_gid)
            self.privileges += ["--reuid", "postgres", "--regid", "postgres", "--clear-groups"]
        self._run(programs() / "initdb", "-D", self.directory / "data", "-U", "postgres", "-A", "trust", "-E", "UTF8",
                  "--locale=C.UTF-8", "-N")
        if listen:
            self._run("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=test", "-keyout",
                      self.directory / "data/server.key", "-out", self.directory / "data/server.crt")
        (self.directory / "data/pg_hba.conf").write_text(hba, encoding="utf-8")
        self.start()

    def _run(self, *words, **options):
        done = subprocess.run(self.privileges + [str(word) for word in words], cwd=self.directory, capture_output=True,
                              text=True, timeout=PATIENCE, check=False, **options)
        assert done.returncode == 0, f"{words[0]}: {done.stderr}"
        return done.stdout

    def start(self):
        options = [f"listen_addresses={self.listen}", "fsync=off", "max_connections=40", "shared_buffers=16MB",
                   f"ssl={'on' if self.listen else 'off'}"]
        command = [programs() / "postgres", "-D", self.directory / "data", "-k", self.directory]
        with open(self.directory / "log", "a", encoding="utf-8") as log:
            self.process = subprocess.Popen(self.privileges + [str(word) for word in command] +
                                            [word for option in options for word in ("-c", option)],
                                            cwd=self.directory, stdin=subprocess.DEVNULL, stderr=log)
        end = time.monotonic() + PATIENCE
        while subprocess.call([programs() / "pg_isready", "-q", "-h", self.directory]) != 0:
            assert time.monotonic() < end and self.process.poll() is None, self.log()
            time.sleep(0.02)

    def stop(self):
        """Ends all connections, and the server."""
        self.process.send_signal(signal.SIGINT)
        self.process.wait(PATIENCE)

    def remove(self):
        if self.process is not None and self.process.poll() is None:
            self.stop()
        shutil.rmtree(self.directory)

    def log(self):
        return (self.directory / "log").read_text(encoding="utf-8")

    def environment(self, user="postgres"):
        """For the programs of PostgreSQL: this server, as a user."""
        return {"PGHOST": str(self.directory), "PGUSER": user}

    def address(self, database, user):
        """As `--catalogue` takes it, by the socket."""
        return f"postgresql://{user}@/{database}?host={self.directory}"

    def psql(self, commands, database="postgres", user="postgres"):
        """What the commands print: values separated by "|"."""
        done = subprocess.run([programs() / "psql", "-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1", "-d", database],
                              input=commands, env={**os.environ, **self.environment(user)}, capture_output=True, text=True,
                              timeout=PATIENCE, check=False)
        if done.returncode != 0:
            raise RuntimeError(done.stderr)
        return done.stdout.strip()
