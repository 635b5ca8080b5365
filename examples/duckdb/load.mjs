// Loads what "raslog export --format jsonl" wrote into a DuckDB database and counts the types:
//   npm install @duckdb/node-api
//   node load.mjs ras.duckdb entries.jsonl...
// Prints the counts as JSON. DuckDB's own shell takes the same statements.
import { DuckDBInstance } from '@duckdb/node-api';

const numbers = {
  entry: 'UBIGINT', offset: 'UBIGINT', code: 'USMALLINT', year: 'USMALLINT', month: 'UTINYINT',
  day: 'UTINYINT', hour: 'UTINYINT', minute: 'UTINYINT', second: 'UTINYINT',
  fraction: 'UTINYINT', pid: 'UINTEGER', tid: 'UINTEGER', major_error: 'UINTEGER',
  minor_error: 'UINTEGER', detect_point: 'UINTEGER', data_length: 'UINTEGER', blocks: 'UINTEGER',
};
const columns = {
  log: 'VARCHAR', entry: 0, offset: 0, code: 0, type: 'VARCHAR', time: 'TIMESTAMP', year: 0,
  month: 0, day: 0, hour: 0, minute: 0, second: 0, fraction: 0, pid: 0, tid: 0, major_error: 0,
  minor_error: 0, detect_point: 0, detect_point_type: 'VARCHAR', function: 'VARCHAR',
  data_length: 0, blocks: 0,
};

const quoted = (text) => `'${text.replaceAll("'", "''")}'`;
const [database, ...files] = process.argv.slice(2);
const connection = await (await DuckDBInstance.create(database)).connect();
const types = Object.entries(columns).map(([name, type]) => `"${name}": '${type || numbers[name]}'`);
await connection.run(`CREATE OR REPLACE TABLE entries AS
  FROM read_json([${files.map(quoted)}], format = 'newline_delimited', columns = {${types}})`);
const counts = await connection.runAndReadAll(
  'SELECT log, type, count(*)::INTEGER AS entries FROM entries GROUP BY ALL ORDER BY ALL');
console.log(JSON.stringify(counts.getRowObjects()));
