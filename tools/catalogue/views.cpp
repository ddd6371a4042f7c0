#include "catalogue/views.h"

namespace catalogue {

namespace {

// A fault that is in a recording and in its record, or in those of two recorders at once, is one: the numbers
// count moments. For the recorders, a step in an index leads from each to the next, so that it takes as long
// as there are recorders, not entries.
const char* const Both = R"sql(
CREATE VIEW present AS -- entries whose files are there
SELECT * FROM entries WHERE gone IS NULL;
CREATE VIEW faults AS -- entries with a fault, whose files are there
SELECT id, kind, path, station, recorder, trigger_time, moment, month, line, fault_kind,
       fault_direction, fault_onset, fault_clearing, fault_duration, fault_current, distance_method, distance_percent,
       distance_km, fault_resistance, start_after, trip_after, breaker_after, clearing_after, dead_time, reclosed
FROM entries WHERE gone IS NULL AND fault_kind IS NOT NULL;
CREATE VIEW faults_by_month AS -- how many faults each month, on the clocks of the recorders
SELECT month, count(DISTINCT moment) AS faults FROM faults GROUP BY month ORDER BY month;
CREATE VIEW faults_by_line AS -- how many faults on each line, their longest duration (s), greatest current (A) and last time
SELECT line, count(DISTINCT moment) AS faults, max(fault_duration) AS longest, max(fault_current) AS greatest_current,
       max(trigger_time) AS last_time
FROM faults GROUP BY line ORDER BY faults DESC, line;
CREATE VIEW faults_by_kind AS -- how many faults of each kind
SELECT fault_kind, count(DISTINCT moment) AS faults FROM faults GROUP BY fault_kind ORDER BY faults DESC, fault_kind;
CREATE VIEW slowest_clearings AS -- faults that were cleared, the slowest first
SELECT fault_duration, station, line, fault_kind, trigger_time, trip_after, breaker_after, path
FROM faults WHERE fault_duration IS NOT NULL ORDER BY fault_duration DESC, moment;
CREATE VIEW recorders AS -- every recorder with its last trigger, also if that is gone
WITH RECURSIVE stations (station) AS (
    SELECT min(station) FROM entries WHERE reason IS NULL
    UNION ALL
    SELECT (SELECT min(e.station) FROM entries e WHERE e.reason IS NULL AND e.station > s.station)
    FROM stations s WHERE s.station IS NOT NULL
), names (station, recorder) AS (
    SELECT s.station, (SELECT min(e.recorder) FROM entries e WHERE e.reason IS NULL AND e.station = s.station)
    FROM stations s WHERE s.station IS NOT NULL
    UNION ALL
    SELECT n.station, (SELECT min(e.recorder) FROM entries e
                       WHERE e.reason IS NULL AND e.station = n.station AND e.recorder > n.recorder)
    FROM names n WHERE n.recorder IS NOT NULL
)
SELECT n.station, n.recorder,
       (SELECT e.moment FROM entries e WHERE e.reason IS NULL AND e.station = n.station AND e.recorder = n.recorder
        ORDER BY e.moment DESC LIMIT 1) AS last,
       (SELECT e.trigger_time FROM entries e WHERE e.reason IS NULL AND e.station = n.station AND e.recorder = n.recorder
        ORDER BY e.moment DESC LIMIT 1) AS last_time
FROM names n WHERE n.recorder IS NOT NULL;
CREATE VIEW silent_recorders AS -- every recorder with its last trigger and the days since then, the most silent first
SELECT station, recorder, last_time, {today} - last / 86400000000.0 AS days_silent
FROM recorders ORDER BY days_silent DESC, station, recorder;
CREATE VIEW unread AS -- what could not be read, and why
SELECT id, kind, path, reason, error, bytes, looked FROM entries WHERE gone IS NULL AND reason IS NOT NULL ORDER BY path;
CREATE VIEW duplicates AS -- entries whose files have the same contents as those of another
SELECT print, path, kind, bytes, (SELECT count(*) FROM entries o WHERE o.print = e.print AND o.gone IS NULL) AS copies
FROM entries e
WHERE gone IS NULL AND EXISTS (SELECT 1 FROM entries o WHERE o.print = e.print AND o.gone IS NULL AND o.id <> e.id)
ORDER BY print, path;
CREATE VIEW watched AS -- recordings in the journals of all recorders of 'zucmtr watch'
SELECT j.host, j.recorder, r.file, r.state, r.record, r.failures, r.unended, r.kills, r.noted, j.directory, j.copied
FROM journal_recordings r JOIN journals j ON j.id = r.journal;
CREATE VIEW named_events AS -- events with the names of their channels
SELECT e.path, e.trigger_time, v.entry, v.place, v.time, c.circuit, c.name, c.phase, v.kind, v.state, v.active
FROM events v JOIN channels c ON c.id = v.channel JOIN entries e ON e.id = v.entry;
CREATE VIEW named_extremes AS -- extremes with the names of their channels
SELECT e.path, e.trigger_time, x.entry, c.circuit, c.name, c.phase, c.unit, x.least, x.greatest
FROM extremes x JOIN channels c ON c.id = x.channel JOIN entries e ON e.id = x.entry;
)sql";

} // namespace

const Commands Views = {Both, "", ""};

} // namespace catalogue
