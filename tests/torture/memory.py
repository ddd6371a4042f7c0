"""Scenario of a long recording under little memory: nothing, or all of it."""
import dataclasses
import itertools

import bench as benches
import recordings
import station as stations

FIRST, LAST, STEP = 128, 200, 12  # MB
SECONDS, CHANNELS, RATE = 30, 200, 2400


def memory(bench):
    """Four files of half a minute with 200 channels: the run fails and leaves four files, or converts all four."""
    points = SECONDS * RATE
    contents = recordings.chain(bench.seed, 1, 4, points, CHANNELS)
    limits = range(FIRST, LAST + 1, STEP)
    # Binary records: text of 58 million samples would take minutes.
    forms = itertools.cycle(["1999", "cff"])
    cases = [dataclasses.replace(case, form=next(forms)) for case in bench.cases(all_forms=False)]
    if bench.short:  # takes seconds each
        cases = [stations.Case("convert", "remove", "1999")]
    bench.jobs, jobs = 1, bench.jobs
    for case in cases:
        bench.each("memory", case, bench.draw(limits, 2, "memory"),
                   lambda station, limit, case=case: _point(bench, station, case, limit, contents))
    bench.jobs = jobs


def _point(bench, station, case, limit, contents):
    station.set_up(case, options=["--max-memory", f"{limit}M"])
    ledger = benches.fill(station, bench.seed, chains=())
    for n, content in enumerate(contents):
        benches.put(station, ledger, recordings.chain_name("rec1.ZU", n), content)
    ledger.changes["rec1.ZU"] = 1
    station.patience = 10 * stations.PATIENCE
    run = station.run()
    ledger.note(run)
    ledger.check_claims(run)
    ledger.check_halves()
    if run.code not in (0, 1):
        ledger.findings.add("stuck", f"exit code {run.code}: {ledger.complaint(run)}")
    if run.code != 0 and not all((station.input / path).exists() for path in ledger.current):
        ledger.findings.add("orphaned", "a run that failed has put files away")
    station.options = []
    findings = benches.conclude(station, ledger)
    station.set_up(case)  # there are hundreds of megabytes
    station.patience = stations.PATIENCE
    return findings
