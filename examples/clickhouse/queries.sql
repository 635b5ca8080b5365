-- Ten questions about a fleet. Each is one query over the hosts of all servers; those of one host
-- with a WHERE host = '...'.

-- 1. What is there of each host, and from when to when?
SELECT host, count() AS entries, countIf(type = 'Error') AS errors, min(moment), max(moment)
FROM ras.entries GROUP BY host ORDER BY host;

-- 2. Which hosts had the most errors, as a share of what they wrote?
SELECT host, round(100 * countIf(type = 'Error') / count(), 2) AS percent
FROM ras.entries GROUP BY host ORDER BY percent DESC, host LIMIT 20;

-- 3. What was the last error of each process?
SELECT host, pid, max(moment) AS last, argMax(major_error, (moment, entry)) AS major,
    argMax(minor_error, (moment, entry)) AS minor, argMax(function, (moment, entry)) AS function
FROM ras.entries WHERE type = 'Error' AND moment IS NOT NULL
GROUP BY host, pid ORDER BY last DESC, host, pid LIMIT 50;

-- 4. Which errors are new: seen on one day, and never before?
SELECT major_error, minor_error, min(moment) AS first, uniqExact(host) AS hosts, count() AS times
FROM ras.entries WHERE type = 'Error'
GROUP BY major_error, minor_error HAVING first >= toDateTime('2026-11-21 00:00:00')
ORDER BY first, major_error, minor_error LIMIT 50;

-- 5. Which minutes were the worst of the whole fleet?
SELECT toStartOfMinute(moment) AS minute, countIf(type = 'Error') AS errors, count() AS entries
FROM ras.entries WHERE moment IS NOT NULL
GROUP BY minute ORDER BY errors DESC, minute LIMIT 10;

-- 6. What went on everywhere in the ten seconds around one moment?
SELECT host, moment, fraction, type, pid, function, detect_point
FROM ras.entries
WHERE moment BETWEEN toDateTime('2026-11-21 08:05:00') - 5 AND toDateTime('2026-11-21 08:05:00') + 5
ORDER BY moment, fraction, host, entry LIMIT 200;

-- 7. Which functions report errors, on how many hosts?
SELECT function, count() AS errors, uniqExact(host) AS hosts, topK(3)(major_error) AS most
FROM ras.entries WHERE type = 'Error' AND function != ''
GROUP BY function ORDER BY errors DESC, function LIMIT 20;

-- 8. Which functions are entered more often than they are left?
SELECT host, function, countIf(detect_point_type = 'Entry') AS entered,
    countIf(detect_point_type = 'Exit') AS left
FROM ras.entries GROUP BY host, function HAVING entered > 2 * left AND entered > 10
ORDER BY entered - left DESC, host, function LIMIT 20;

-- 9. Where was a host silent for long?
SELECT host, moments[i - 1] AS silent_from, gap AS seconds FROM
(
    SELECT host, arraySort(groupArray(toUInt32(assumeNotNull(moment)))) AS numbers,
        arrayMap(n -> toDateTime(n), numbers) AS moments, arrayDifference(numbers) AS gaps
    FROM ras.entries WHERE moment IS NOT NULL GROUP BY host
)
ARRAY JOIN gaps AS gap, arrayEnumerate(gaps) AS i
WHERE i > 1 ORDER BY seconds DESC, host LIMIT 10;

-- 10. Which detect points does one host alone report?
SELECT detect_point, any(host) AS only_host, count() AS times
FROM ras.entries WHERE detect_point != 0
GROUP BY detect_point HAVING uniqExact(host) = 1 ORDER BY times DESC, detect_point LIMIT 20;
