"""The catalogues under torture, asked by programs of other hands: one in a file, and one on a server."""
import csv
import io
import pathlib
import sqlite3
import subprocess
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import postgresserver  # pylint: disable=wrong-import-position


class File:
    """In a file; paths below its directory are stored from there."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        self.address = str(path)

    def exists(self):
        return self.path.exists() and self.path.stat().st_size > 0

    def stored(self, path):
        return str(path.relative_to(self.path.parent) if self.path.parent in path.parents else path)

    def rows(self, query):
        database = sqlite3.connect(f"file:{self.path}?mode=ro", uri=True)
        try:
            return [tuple("" if value is None else str(value) for value in row) for row in database.execute(query)]
        finally:
            database.close()


class Server:
    """In a schema of its own, in a database of the server."""

    number = 0

    def __init__(self, server, database="postgres"):
        Server.number += 1
        self.server, self.database, self.schema = server, database, f"archive{Server.number}"
        server.psql(f"CREATE SCHEMA {self.schema}", database)
        self.address = f"{server.address(database, 'postgres')}&options=-csearch_path%3D{self.schema}"

    def exists(self):
        return self.server.psql(f"SELECT to_regclass('{self.schema}.entries')", self.database) != ""

    def stored(self, path):
        return str(path)

    def rows(self, query):
        words = [postgresserver.programs() / "psql", "-X", "-q", "-t", "--csv", "-v", "ON_ERROR_STOP=1", "-d", self.database,
                 "-h", self.server.directory, "-U", "postgres", "-c", f"SET search_path = {self.schema}", "-c", query]
        done = subprocess.run(words, capture_output=True, text=True, timeout=60, check=True)
        return [tuple(row) for row in csv.reader(io.StringIO(done.stdout))]
