-- A table for "raslog export --format csv", which has these columns in this order:
--   raslog export --format csv host/*.log >entries.csv
--   sqlite3 ras.db <tables.sql
--   sqlite3 ras.db ".import --csv --skip 1 entries.csv entries"
-- An import appends. Where no calendar has a date, the time is an empty text.
CREATE TABLE IF NOT EXISTS entries
(
    log TEXT,
    entry INTEGER,
    offset INTEGER,
    code INTEGER,
    type TEXT,
    time TEXT,
    year INTEGER,
    month INTEGER,
    day INTEGER,
    hour INTEGER,
    minute INTEGER,
    second INTEGER,
    fraction INTEGER,
    pid INTEGER,
    tid INTEGER,
    major_error INTEGER,
    minor_error INTEGER,
    detect_point INTEGER,
    detect_point_type TEXT,
    function TEXT,
    data_length INTEGER,
    blocks INTEGER
);

-- What a reader of logs asks most.
CREATE VIEW IF NOT EXISTS last_error_of_each_process AS
SELECT log, pid, max(time || printf('.%03d', fraction)) AS time, major_error, minor_error, function
FROM entries WHERE type = 'Error' GROUP BY log, pid ORDER BY time DESC;

CREATE VIEW IF NOT EXISTS errors_by_minute AS
SELECT substr(time, 1, 16) AS minute, count(*) AS errors
FROM entries WHERE type = 'Error' GROUP BY minute ORDER BY minute;
