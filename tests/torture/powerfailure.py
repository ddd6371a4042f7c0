"""Scenario of a power failure: every state of the disk that a journaling file system may leave, and the run after it.

The shim's log of an undisturbed run gives the order of changes. What may be found after a failure at a moment:

- creations, renames, links and removals in their order up to some point; those before the last fsync of a directory
  of the file system are there (each file system has a journal, and so a point, of its own);
- of a file, all that was there at its last fsync; of what was written since, wherever in the file, all, the first half,
  the second half or nothing.
"""
import dataclasses
import os
import shutil
import stat

import bench as benches
import recordings
import station as stations

CREATED, TRUNCATES, EXCHANGES = 1 << 40, 0o1000, 2
NAMING = ("create", "rename", "link", "unlink", "mkdir", "rmdir")


class Node:
    """A file: the bytes that are on the disk for certain, and the writes and changes of its size since then: tuples
    (offset, bytes) and (size, None)."""

    def __init__(self, content=b""):
        self.now, self.safe, self.since = content, content, ()

    def change(self, offset, content):
        self.now = changed(self.now, offset, content)
        self.since += ((offset, content),)

    def sync(self):
        self.safe, self.since = self.now, ()


def changed(content, offset, part):
    """The content after one change."""
    if part is None:
        return content[:offset].ljust(offset, b"\0")
    return content[:offset].ljust(offset, b"\0") + part + content[offset + len(part):]


def part_of(safe, since, begin, end):
    """A file's content of whose bytes written since the last fsync those from begin to end came to the disk, as
    fractions of all. Its sizes did."""
    length = sum(len(part) for _offset, part in since if part is not None)
    first, last, at, content = int(length * begin), int(length * end), 0, safe
    for offset, part in since:
        if part is None:
            content = changed(content, offset, None)
            continue
        low, high = max(first - at, 0), min(last - at, len(part))
        at += len(part)
        if low < high:
            content = changed(content, offset + low, part[low:high])
    return content


@dataclasses.dataclass
class Moment:
    """What is known at a moment: how many naming operations each file system has had and has for certain, the bytes
    of the files that are not safe, and what the program has said."""
    done: dict
    certain: dict
    bytes: dict  # of a node: safe, the changes since
    said: bytes


class Log:
    """The log of a run, read into naming operations and moments."""

    def __init__(self, station, names, identities, directories):
        self.there = str(station.archive_there)
        self.initial = dict(names)  # path: node; a directory has None
        self.initial.update(dict.fromkeys(directories))
        self.names = dict(self.initial)
        self.nodes = {identities[path]: node for path, node in names.items()}
        self.every = set(names.values())
        self.operations = {"here": [], "there": []}  # a list for each file system
        self.certain = {"here": 0, "there": 0}
        self.said = b""
        self.data = station.data.read_bytes()
        self.moments = [self._moment()]
        for fields in station.calls():
            if self._take(*fields):
                self.moments.append(self._moment())

    def _system(self, path):
        return "there" if path.startswith(self.there) else "here"

    def _moment(self):
        done = {name: len(operations) for name, operations in self.operations.items()}
        return Moment(done, dict(self.certain), {node: (node.safe, node.since) for node in self.every}, self.said)

    def _take(self, kind, path, second, identity, offset, length, position, flags):
        offset, length, position, flags = int(offset), int(length), int(position), int(flags)
        if kind == "map":
            raise RuntimeError(f"'{path}' is written through a mapping, which the log does not see")
        if kind == "print":
            self.said += self.data[position:position + length]
            return True
        if kind in ("open", "create"):
            return self._open(path, identity, flags)
        if kind == "write":
            self.nodes[identity].change(offset, self.data[position:position + length])
            return False
        if kind == "truncate":
            node = self.nodes[identity] if identity != "0:0" else self.names[path]
            node.change(max(-length, len(node.now)) if length < 0 else length, None)
            return False
        if kind == "sync":
            self._sync(path, identity, flags)
            return True
        if kind in NAMING:
            self._name(kind, path, second, identity, flags)
            return True
        return False

    def _open(self, path, identity, flags):
        if flags & CREATED and identity != "0:0":
            node = self.nodes[identity] = Node()
            self.every.add(node)
            if flags & os.O_TMPFILE != os.O_TMPFILE and flags & os.O_CREAT:
                self._apply(path, ("create", path, "", node))
                return True
        elif flags & TRUNCATES and identity in self.nodes:
            self.nodes[identity].change(0, None)
        return False

    def _sync(self, path, identity, flags):
        if flags or path in self.names and self.names[path] is None:
            system = self._system(path)
            self.certain[system] = len(self.operations[system])
        for node in [self.nodes.get(identity)] if not flags else self.nodes.values():
            if node:
                node.sync()

    def _name(self, kind, path, second, identity, flags):
        node = self.nodes.get(identity) if kind == "link" else None
        if kind == "rename" and flags & EXCHANGES:
            kind = "exchange"
        self._apply(second or path, (kind, path, second, node))

    def _apply(self, path, operation):
        self.operations[self._system(path)].append(operation)
        apply(self.names, operation)

    def states(self):
        """All states, each once, as (text, {path: bytes or None for a directory}, what the program has said)."""
        seen = set()
        for number, moment in enumerate(self.moments):
            for points in _points(moment):
                names = dict(self.initial)
                for system, operations in self.operations.items():
                    for operation in operations[:points[system]]:
                        apply(names, operation)
                for variant, tree in _variants(names, moment):
                    key = hash((frozenset(tree.items()), moment.said))
                    if key not in seen:
                        seen.add(key)
                        text = f"moment {number}, names {points['here']}+{points['there']}, {variant}"
                        yield text, tree, moment.said


def _points(moment):
    """How many naming operations each file system may have; one of them has its least or its most."""
    ranges = {name: range(moment.certain[name], moment.done[name] + 1) for name in moment.done}
    seen = set()
    for here in ranges["here"]:
        for there in ranges["there"]:
            extreme = here in (ranges["here"][0], ranges["here"][-1]) or there in (ranges["there"][0],
                                                                                  ranges["there"][-1])
            if extreme and (here, there) not in seen:
                seen.add((here, there))
                yield {"here": here, "there": there}


def _variants(names, moment):
    def tree(choose):
        return {path: None if node is None else choose(node, *moment.bytes[node])
                for path, node in names.items()}

    unsafe = [path for path, node in names.items() if node and moment.bytes[node][1]]
    yield "all bytes", tree(lambda node, safe, since: part_of(safe, since, 0, 1))
    if not unsafe:
        return
    yield "no bytes", tree(lambda node, safe, since: part_of(safe, since, 0, 0))
    yield "half of the bytes", tree(lambda node, safe, since: part_of(safe, since, 0, 0.5))
    yield "the other half", tree(lambda node, safe, since: part_of(safe, since, 0.5, 1))
    for path in unsafe if len(unsafe) > 1 else []:
        yield f"without the bytes of {os.path.basename(path)}", \
            tree(lambda node, safe, since, path=path: part_of(safe, since, 0, 0 if node is names[path] else 1))


def apply(names, operation):
    """A naming operation on {path: node}."""
    kind, path, second, node = operation
    if kind in ("create", "link"):
        names[second or path] = node
    elif kind == "mkdir":
        names[path] = None
    elif kind in ("unlink", "rmdir"):
        names.pop(path, None)
    elif kind == "exchange":
        names[path], names[second] = names[second], names[path]
    elif path in names:
        names[second] = names.pop(path)
        for below in [name for name in names if name.startswith(path + "/")]:
            names[second + below[len(path):]] = names.pop(below)


def _identity(path):
    status = os.stat(path)
    return f"{status.st_dev}:{status.st_ino}"


def power_failure(bench):
    # Only a plain conversion leaves records that were never synced, so that its forms matter.
    plain = list(bench.cases(commands=["convert"], modes=["plain"]))
    for case in plain + [case for case in bench.cases(all_forms=False) if case not in plain]:
        with bench.station() as station:
            states = _record(bench, station, case)
            drawn = dict(bench.draw([(state[0], state) for state in states], 8, "power", case))

            # Paths are in the journal, so every state is rebuilt where it was recorded: one after the other.
            def work(_station, name, station=station, case=case, drawn=drawn):
                return _after(bench, station, case, drawn[name])

            jobs, bench.jobs = bench.jobs, 1
            bench.each("power-failure", case, drawn, work)
            bench.jobs = jobs


def _record(bench, station, case):
    """The states that an undisturbed run may leave. The recordings' files get a second name each, by which they
    are put back as they were, with their times and numbers: the journal may know them by these."""
    station.set_up(case)
    benches.fill(station, bench.seed, chains=((1, 2), (2, 1)))
    originals = station.root / "originals"
    shutil.rmtree(originals, ignore_errors=True)
    originals.mkdir()
    names, identities = {}, {}
    for path in station.input.iterdir():
        os.link(path, originals / recordings.digest(path.read_bytes()))
        identities[str(path)] = _identity(path)
        names[str(path)] = Node(path.read_bytes())
    station.forget_texts()
    run = station.result(station.start("none 0", data=True))
    if run.code != 0:
        raise RuntimeError(f"the undisturbed run failed: {run.text}")
    log = Log(station, names, identities, [str(path) for path in station.directories()])
    actual = {str(path): path.read_bytes() for top in station.directories() for path in top.rglob("*")
              if path.is_file()}
    rebuilt = {path: node.now for path, node in log.names.items() if node}
    if rebuilt != actual:
        raise RuntimeError("the shim does not see all: " + ", ".join(
            sorted(path for path in {*rebuilt, *actual} if rebuilt.get(path) != actual.get(path))))
    return list(log.states())


def _after(bench, station, case, state):
    """The accounts after a power failure that left this state, and a run."""
    _text, tree, said = state
    station.set_up(case)
    ledger = benches.fill(station, bench.seed, chains=((1, 2), (2, 1)))
    station.set_up(case)
    _rebuild(station, tree)
    text = said.decode("utf-8", "replace")
    before = stations.Run(0, text, stations.parse_events(text))
    ledger.note(before)
    if case.puts_away() or case.command == "watch":
        # What was said and put away is on the disk; a plain conversion promises nothing yet.
        ledger.check_claims(before)
        ledger.check_halves()
    return benches.conclude(station, ledger)


def _rebuild(station, tree):
    originals = station.root / "originals"
    for path, content in sorted(tree.items()):
        if content is None:
            os.makedirs(path, exist_ok=True)
            continue
        os.makedirs(os.path.dirname(path), exist_ok=True)
        original = originals / recordings.digest(content)
        if original.exists() and not path.startswith(str(station.archive_there)):
            os.link(original, path)
            continue
        with open(path, "wb") as file:
            file.write(content)
        if original.exists():
            shutil.copystat(original, path)
        if path.endswith(".part"):  # the program's copies have this mark until they have their names
            os.chmod(path, os.stat(path).st_mode | stat.S_ISVTX)
