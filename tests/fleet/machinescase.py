"""What the tests with machines share: three of them, and a PostgreSQL server that they reach by TLS."""
import pathlib
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).absolute().parents[1] / "support"))

from fleetcase import FleetCase, PROGRAM, commands
from machines import BRIDGE, Machine, Network
from postgresserver import PostgresServer, programs

NAMES = ["conv1", "conv2", "conv3"]


class MachinesCase(FleetCase):
    """The machines and the server stay for all tests of a class; what a test has lost is there again for the next one."""
    copies = 8

    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        pathlib.Path(place.name).chmod(0o755)
        cls.network = Network(pathlib.Path(place.name), NAMES)
        cls.addClassCleanup(cls.network.remove)
        home = cls.network.home
        (home / ".ssh/config").write_text(commands()["ssh"], encoding="utf-8")
        (home / ".pgpass").write_text(commands()["pgpass"], encoding="utf-8")
        (home / ".pgpass").chmod(0o600)
        (home / ".parallel").mkdir()
        (home / ".parallel/will-cite").touch()
        cls.server = PostgresServer(BRIDGE, commands()["pghba"] + "local all all trust\n")
        cls.addClassCleanup(cls.server.remove)
        cls.machines = {}
        for name in NAMES:
            cls.machines[name] = Machine(cls.network, name, PROGRAM)
            cls.addClassCleanup(cls.machines[name].stop)
            cls.machines[name].start()

    def setUp(self):
        super().setUp()
        for machine in self.machines.values():
            machine.start()
        self.environment.update(self.server.environment(), HOME=str(self.network.home), CATALOGUE="postgresql://relay@db/archive",
                                MACHINES=",".join(f"2/{name}" for name in NAMES))
        self.environment["PATH"] += f":{programs()}"
        self.run_shell(commands()["roles"] + commands()["database"])
        self.addCleanup(self.server.psql, "DROP DATABASE archive WITH (FORCE); DROP ROLE relay; DROP ROLE analyst")
        self.run_shell(commands()["list"])

    def expect_all_converted(self):
        """The records are those of a plain run, and the catalogue is right about everything."""
        self.convert_plainly()
        self.assertEqual(self.records("plain"), self.records("записи"))
        for directory in ("'the archive'", "записи"):
            self.run_shell(f"zucmtr archive check --catalogue \"$CATALOGUE\" {directory}")
        found = self.server.psql("SELECT kind, coalesce(verified, '-'), recording IS NOT NULL, count(*) FROM present "
                                 "GROUP BY 1, 2, 3 ORDER BY 1", "archive")
        self.assertEqual(f"record|right|t|{self.recordings}\nrecording|-|f|{self.recordings}", found)
