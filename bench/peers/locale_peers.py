"""Times the Python peers on the inputs bench/locale_bench.cpp uses; prints one JSON line each."""
import datetime
import json
import time

N = 1024


def amounts():
    return [(i * 2654435761 % 1000000000) // 100 for i in range(N)]  # whole units


def numbers(start, step, digits):
    return ["%0*d" % (digits, (start + i * step) % 10**digits) for i in range(N)]


def per_call(name, fn, inputs, min_seconds=1.0):
    calls, start = 0, time.perf_counter()
    while True:
        for x in inputs:
            fn(x)
        calls += len(inputs)
        elapsed = time.perf_counter() - start
        if elapsed >= min_seconds:
            print(json.dumps({"name": name, "ns": elapsed * 1e9 / calls}), flush=True)
            return


def main():
    from num2words import num2words
    from stdnum.pl import nip, pesel, regon
    import holidays

    per_call("py num2words pl", lambda n: num2words(n, lang="pl"), amounts())
    per_call("py stdnum pesel", pesel.is_valid, numbers(44051401458, 104729, 11))
    per_call("py stdnum regon", regon.is_valid, numbers(123456785, 7919, 9))
    per_call("py stdnum nip", nip.is_valid, numbers(1234563218, 15485863, 10))
    days, d = [], datetime.date(1950, 1, 1)
    while d < datetime.date(2050, 1, 1):
        days.append(d)
        d += datetime.timedelta(days=1)
    poland = holidays.Poland()
    for x in days:  # fill the per-year cache before timing
        x in poland
    per_call("py holidays", lambda x: x in poland, days)


main()
