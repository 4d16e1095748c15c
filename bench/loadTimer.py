#!/usr/bin/python3
# Starts one Windows program under Wine on a file and times, from its start, three moments that
# bench/loadProbe.cpp sees from a second Wine process: a visible window whose title holds a text, the first
# text in its edit control, and the whole text (the control's length reaching a count of UTF-16 units).
# Prints "window first whole peak_kib" (seconds, and the program's peak memory once the text is whole) and
# ends both by their pids.
#   loadTimer.py <wine-run.sh> <probe.exe> <title part> <units> <timeout> <program> [args...]
import os
import signal
import subprocess
import sys
import threading
import time


def peak_kib(pid):
    try:
        with open("/proc/%d/status" % pid) as f:
            for line in f:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1])
    except OSError:
        pass
    return -1


def stop(process):
    if process.poll() is None:
        os.kill(process.pid, signal.SIGKILL)
    process.wait()


def main():
    wine, probe_exe, title, units, timeout, command = (sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4],
                                                       float(sys.argv[5]), sys.argv[6:])
    probe = subprocess.Popen([wine, probe_exe, title, units], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                             text=True, start_new_session=True)
    program = None
    times = {}
    try:
        if probe.stdout.readline().strip() != "ready":
            print("timeout")
            return 1
        start = time.time()
        program = subprocess.Popen([wine] + command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   start_new_session=True)
        # a probe that never sees the whole text is ended, which ends the loop below
        watchdog = threading.Timer(timeout, lambda: probe.poll() is None and os.kill(probe.pid, signal.SIGKILL))
        watchdog.start()
        # the probe prints its three lines in order and ends after the last
        for line in probe.stdout:
            name, _, at = line.strip().partition(" ")
            times[name] = float(at) - start
            if name == "whole":
                break
        watchdog.cancel()
        peak = peak_kib(program.pid)
    finally:
        stop(probe)
        if program:
            stop(program)
    if "whole" not in times:
        print("timeout")
        return 1
    print("%.3f %.3f %.3f %d" % (times["window"], times["text"], times["whole"], peak))
    return 0


if __name__ == "__main__":
    sys.exit(main())
