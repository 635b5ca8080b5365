-- For each server of the cluster: its own part of the fleet's entries, and the table of them all.
-- Tried with ClickHouse 18.16, as Debian 12 has it.
CREATE DATABASE IF NOT EXISTS ras;

CREATE TABLE IF NOT EXISTS ras.entries_here
(
    -- Logs are exported by names like HOST/FILE, the last folder being the host.
    host String DEFAULT extract(log, '([^/]+)/[^/]*$'),
    log String,
    entry UInt64,
    offset UInt64,
    code UInt16,
    type Enum8('Error' = 1, 'Trace' = 2, 'Message' = 3, 'Unknown' = 4),
    -- Null where no calendar has the date. It must be Nullable: a null for a String is an error in
    -- this version of ClickHouse, and the whole block of entries is lost.
    time Nullable(String),
    year UInt16,
    month UInt8,
    day UInt8,
    hour UInt8,
    minute UInt8,
    second UInt8,
    fraction UInt8,
    pid UInt32,
    tid UInt32,
    major_error UInt32,
    minor_error UInt32,
    detect_point UInt32,
    detect_point_type String,
    function String,
    data_length UInt32,
    blocks UInt32,
    -- The time to reckon with; null outside of the years 1970 to 2105 too.
    moment Nullable(DateTime) DEFAULT
        if(year BETWEEN 1970 AND 2105, parseDateTimeBestEffortOrNull(time), NULL)
)
ENGINE = MergeTree
-- A damaged log has any year; each would be a partition of its own.
PARTITION BY if(year BETWEEN 1970 AND 2105, year, 0)
ORDER BY (host, year, month, day, hour, minute, second, fraction, entry);

-- A host's entries stay together, so that most queries of one host ask one server.
CREATE TABLE IF NOT EXISTS ras.entries AS ras.entries_here
ENGINE = Distributed(fleet, ras, entries_here, cityHash64(host));
