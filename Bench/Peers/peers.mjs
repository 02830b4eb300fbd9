// What an analyst would use instead, measured on the table that the press benchmark wrote: for each of its eight text
// fields the time of filtering by one value and counting the values of the other fields that remain.
//
//     node peers.mjs TABLE.csv [REPETITIONS]
//
// Prints a table: for each peer the milliseconds of loading and, by field, the median of a press. DuckDB runs on one
// thread with its columns encoded as enumerations; the loading of crossfilter2 begins behind the parsing.

import { readFileSync } from 'node:fs';
import crossfilter from 'crossfilter2';
import { DuckDBInstance } from '@duckdb/node-api';

const [path, repetitionsArg] = process.argv.slice(2);
if (path === undefined) {
  console.error('usage: node peers.mjs TABLE.csv [REPETITIONS]');
  process.exit(2);
}
const repetitions = Number(repetitionsArg ?? 5);
const FLD_COUNT = 8;
const fields = Array.from({ length: FLD_COUNT }, (_, i) => `f${i}`);

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
const now = () => performance.now();
const pick = (values, i) => values[(i * 7919 + Math.floor(values.length / 3)) % values.length];

// The values of each field, in order of first appearance, to press some of.
function distinctValues(rows) {
  return fields.map((_, fld) => {
    const seen = new Set();
    for (const row of rows) seen.add(row[fld]);
    return [...seen];
  });
}

async function runDuckDB(values) {
  const connection = await (await DuckDBInstance.create(':memory:', { threads: '1' })).connect();
  const loadStart = now();
  await connection.run(`CREATE TABLE raw AS SELECT * FROM read_csv('${path}', header = true)`);
  for (const field of fields) {
    await connection.run(`CREATE TYPE enum_${field} AS ENUM (SELECT DISTINCT ${field} FROM raw WHERE ${field} IS NOT NULL)`);
  }
  const columns = fields.map((field) => `${field}::enum_${field} AS ${field}`).join(', ');
  await connection.run(`CREATE TABLE bench AS SELECT ${columns}, amount FROM raw`);
  await connection.run('DROP TABLE raw');
  const load = now() - loadStart;

  const press = [];
  for (const [fld, field] of fields.entries()) {
    const counts = fields.filter((other) => other !== field).map((other) => `count(DISTINCT ${other})`).join(', ');
    const times = [];
    for (let i = 0; i < repetitions; ++i) {
      const start = now();
      const reader = await connection.runAndReadAll(
        `SELECT ${counts} FROM bench WHERE ${field} = '${pick(values[fld], i)}'`);
      reader.getRows();
      times.push(now() - start);
    }
    press.push(median(times));
  }
  return { load, press };
}

function runCrossfilter(rows, values) {
  const loadStart = now();
  const filter = crossfilter(rows);
  const dimensions = fields.map((_, fld) => filter.dimension((row) => row[fld]));
  const groups = dimensions.map((dimension) => dimension.group().reduceCount());
  const load = now() - loadStart;

  const press = [];
  for (let fld = 0; fld < FLD_COUNT; ++fld) {
    const times = [];
    // It keeps its counts by what changes from one filter to the next, and the change to a value from no filter is by
    // far the dearest. So as not to wrong it, the change from one value to another is what is measured.
    dimensions[fld].filterExact(pick(values[fld], repetitions));
    for (let i = 0; i < repetitions; ++i) {
      const start = now();
      dimensions[fld].filterExact(pick(values[fld], i));
      let displayed = 0;
      for (let other = 0; other < FLD_COUNT; ++other) {
        if (other === fld) continue;
        for (const entry of groups[other].all()) displayed += entry.value > 0 ? 1 : 0;
      }
      times.push(now() - start);
    }
    dimensions[fld].filterAll();
    press.push(median(times));
  }
  return { load, press };
}

const rows = readFileSync(path, 'latin1').split('\n').slice(1, -1).map((line) => line.split(','));
const values = distinctValues(rows);
const duckdb = await runDuckDB(values);
const crossfilter2 = runCrossfilter(rows, values);
const figure = (value) => value.toFixed(value < 1 ? 4 : 1).padStart(16);
console.log(`\n${'milliseconds'.padStart(12)}${'DuckDB'.padStart(16)}${'crossfilter2'.padStart(16)}`);
console.log(`${'load'.padStart(12)}${figure(duckdb.load)}${figure(crossfilter2.load)}`);
for (const [fld, distinct] of values.entries()) {
  console.log(`${String(distinct.length).padStart(12)}${figure(duckdb.press[fld])}${figure(crossfilter2.press[fld])}`);
}
