"""Programs that stand in for the real one in the tests of the torture: a right one, and the same with one mistake each.

They convert recordings into ASCII records with `convert --json` and `watch --once` of the same words.
"""
import pathlib
import sys

SINS = {
    "none": "does everything right",
    "removes first": "deletes the sources before the record has its name",
    "removes by name": "deletes whatever has the names of the sources in the end",
    "passes over": "takes a continuation that cannot be opened for one that is not there",
    "keeps half": "gives the configuration its name before the data, and refuses what it finds then",
    "does not sync": "never waits for the disk",
    "leaves temporary": "leaves its directory beside --out when it is killed",
    "says nothing": "deletes the first file first, and says nothing of continuations that it finds alone",
    "no journal": "watches without remembering what is converted",
}

BODY = r'''
import json, os, sys
import recordings
words = sys.argv[1:]
watches = words[0] == "watch"
removes = "--remove-source" in words
values = dict(zip(words, words[1:]))
out, state, place = values["--out"], values.get("--state"), words[-1]
name_of = "240131,1200{:02}.0,+3t,Object,Source.Subject".format


def sync(path):
    if SIN != "does not sync":
        file = os.open(path, os.O_RDONLY)
        os.fsync(file)
        os.close(file)


def say(first, error, sources):
    line = {"file": first, "error": error, "sources": sources, "verified": not error}
    if watches:
        line["event"] = line["status"] = "failed" if error else "converted"
    print(json.dumps(line), flush=True)


def stamp(status):
    return status.st_ino, status.st_size, status.st_mtime_ns, status.st_ctime_ns


def read(first):
    chain = []
    for n in range(16):
        path = recordings.chain_name(first, n)
        try:
            with open(path, "rb", buffering=0) as file:
                chain.append((path, stamp(os.fstat(file.fileno())), file.read()))
        except FileNotFoundError:
            break
        except OSError:
            if SIN != "passes over" or n == 0:
                raise
            break
    return chain


def texts(files):
    rows = [row for file in files for row in zip(*file.columns)]
    count = len(files[0].columns)
    cfg = "S,D,2013\n%d,%dA,0D\n" % (count, count) + "channel\n" * count
    cfg += "50\n1\n1000,%d\n31/01/2024,11:59:59.500000\n" % len(rows)
    cfg += "31/01/2024,12:00:%02d.000000\nASCII\n1\n" % (files[0].trigger - recordings.BASE)
    return cfg, "".join("%d,0,%s\n" % (n + 1, ",".join(map(str, row))) for n, row in enumerate(rows))


def commit(name, cfg, dat):
    target = os.path.join(out, name)
    order = [(".dat", dat), (".cfg", cfg)]
    if SIN == "keeps half":
        if os.path.exists(target + ".cfg") and not os.path.exists(target + ".dat"):
            raise OSError("half a record is there")
        order.reverse()
    own = out + "/.own"
    os.mkdir(own)
    for suffix, text in order:
        with open(own + "/piece" + suffix, "w") as file:
            file.write(text)
        sync(own + "/piece" + suffix)
    for suffix, _text in order:
        os.rename(own + "/piece" + suffix, target + suffix)
    sync(out)
    os.rmdir(own)
    sync(out)


def remove(chain):
    if SIN in ("removes by name", "removes first", "says nothing"):
        for path, _stamp, _content in chain:
            os.unlink(path)
        return
    away = place + "/.away"
    os.mkdir(away)
    if any(stamp(os.stat(path)) != was for path, was, _content in chain):
        os.rmdir(away)
        raise OSError("changed")
    for path, _stamp, _content in chain:
        os.rename(path, os.path.join(away, os.path.basename(path)))
    for path, was, _content in chain:
        if stamp(os.stat(os.path.join(away, os.path.basename(path))))[:3] != was[:3]:
            put_back(away)
            raise OSError("changed")
    if os.path.exists(recordings.chain_name(chain[0][0], len(chain))):
        put_back(away)
        raise OSError("continued")
    os.rename(away, place + "/.done") # from here on they go, whatever happens
    clear(place + "/.done")


def put_back(away):
    for name in sorted(os.listdir(away), reverse=True): # the first file last
        target = os.path.join(place, name)
        while os.path.exists(target):
            target += ".found"
            print(json.dumps({"found": os.path.basename(target)}))
        os.rename(os.path.join(away, name), target)
    os.rmdir(away)


def clear(directory):
    for name in os.listdir(directory):
        os.unlink(os.path.join(directory, name))
    os.rmdir(directory)


def convert(first):
    chain = read(first)
    files = [recordings.File(content) for _path, _stamp, content in chain]
    if SIN == "removes first" and removes:
        remove(chain)
    commit(name_of(files[0].trigger - recordings.BASE), *texts(files))
    if removes and SIN != "removes first":
        remove(chain)
    return [path for path, _stamp, _content in chain]


def recover():
    if os.path.exists(out + "/.own") and SIN != "leaves temporary":
        clear(out + "/.own")
    if os.path.exists(place + "/.done"):
        clear(place + "/.done")
    if os.path.exists(place + "/.away"):
        put_back(place + "/.away")


def orphans():
    for name in sorted(os.listdir(place)):
        first = recordings.first_name(name)
        if SIN != "says nothing" and first and first != name and not os.path.exists(os.path.join(place, first)):
            print(json.dumps({"orphan": name}))


def print_of(first):
    names = [recordings.chain_name(first, n) for n in range(16)]
    return repr([stamp(os.stat(name))[:3] for name in names if os.path.exists(name)])


recover()
journal = {}
if state and os.path.exists(state) and SIN != "no journal":
    with open(state) as file:
        journal = dict(line.rstrip("\n").split("=", 1) for line in file if line.endswith("\n"))
code = 0
for name in sorted(os.listdir(place)):
    first = os.path.join(place, name)
    if not name.endswith(".ZU"):
        continue
    try:
        seen = print_of(first)
        if journal.get(first) == seen:
            continue
        sources = convert(first)
        if not removes and print_of(first) != seen:
            raise OSError("changed")
        if state and SIN != "no journal":
            with open(state, "a") as file:
                file.write(first + "=" + seen + "\n")
            sync(state)
            sync(os.path.dirname(state))
        say(first, None, sources)
    except (OSError, recordings.Bad) as error:
        code = 1
        say(first, repr(error), [])
orphans()
sys.exit(code)
'''


def write(directory, sin):
    """An executable file that commits the sin."""
    path = pathlib.Path(directory) / ("fake-" + sin.replace(" ", "-"))
    here = pathlib.Path(__file__).parent
    head = f"#!{sys.executable} -BSE\nimport sys\nsys.path.insert(0, {str(here)!r})\nSIN = {sin!r}\n"
    path.write_text(head + BODY, encoding="utf-8")
    path.chmod(0o755)
    return path
