// Times the npm peers on the inputs bench/locale_bench.cpp uses; prints one JSON line each.
import { createRequire } from 'node:module';
import { toCardinal } from 'n2words/pl-PL';

const require = createRequire(import.meta.url);
const { validatePolish } = require('validate-polish');
const Holidays = require('date-holidays');

const N = 1024;
const amounts = Array.from({ length: N }, (_, i) => Math.floor(Number((BigInt(i) * 2654435761n) % 1000000000n) / 100));
const numbers = (start, step, digits) =>
  Array.from({ length: N }, (_, i) =>
    ((BigInt(start) + BigInt(i) * BigInt(step)) % 10n ** BigInt(digits)).toString().padStart(digits, '0'));

function perCall(name, fn, inputs, minSeconds = 1.0) {
  let calls = 0;
  let sink = 0;
  const start = process.hrtime.bigint();
  for (;;) {
    for (const x of inputs) if (fn(x)) sink++;
    calls += inputs.length;
    const ns = Number(process.hrtime.bigint() - start);
    if (ns >= minSeconds * 1e9) {
      console.log(JSON.stringify({ name, ns: ns / calls, sink }));
      return;
    }
  }
}

perCall('npm n2words pl', (n) => toCardinal(n), amounts);
perCall('npm validate-polish pesel', (s) => validatePolish.pesel(s), numbers(44051401458, 104729, 11));
perCall('npm validate-polish regon', (s) => validatePolish.regon(s), numbers(123456785, 7919, 9));
perCall('npm validate-polish nip', (s) => validatePolish.nip(s), numbers(1234563218, 15485863, 10));
const hd = new Holidays('PL');
const days = [];
for (let d = new Date(1950, 0, 1); d < new Date(2050, 0, 1); d = new Date(d.getFullYear(), d.getMonth(), d.getDate() + 1)) days.push(d);
for (const d of days) hd.isHoliday(d);  // warm its per-year cache
perCall('npm date-holidays', (d) => hd.isHoliday(d), days);
