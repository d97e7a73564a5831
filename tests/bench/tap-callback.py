#!/usr/bin/python3
"""Time in the callback that stands between the keyboard and every program, for each kind of event."""
import json
import subprocess

from processes import goal, measuring_program

MICROSECONDS_PER_NANOSECOND = 1e-3


def main():
    answer = subprocess.run([measuring_program("tap_callback"), "--benchmark_format=json"], capture_output=True,
                            text=True, check=True)
    rows = json.loads(answer.stdout)["benchmarks"]
    print("event                                     median ns   99 in 100 ns")
    for row in rows:
        print(f"{row['name'].split('/')[1].replace('_', ' '):40} {row['median_ns']:10.0f} {row['p99_ns']:14.0f}")
    goal("the tap's callback, 99 in 100 of the dearest event, microseconds",
         MICROSECONDS_PER_NANOSECOND * max(row["p99_ns"] for row in rows), "under 50")


if __name__ == "__main__":
    main()
