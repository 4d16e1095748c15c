#!/usr/bin/python3
# Starts one Windows program under Wine and measures the time from its start until a top-level window's
# title contains a given text, by waiting on X events (window creation, then property changes of
# WM_NAME/_NET_WM_NAME), never by polling. With --shown first, until such a window is also mapped (shown
# on the screen). Prints "seconds peak_kib" and ends the program by its pid.
import os
import select
import signal
import subprocess
import sys
import time

from Xlib import X, display


def title_of(d, window, names):
    for atom in names:
        try:
            prop = window.get_full_property(atom, X.AnyPropertyType)
        except Exception:  # the window may be gone already
            return ""
        if prop is not None and prop.value:
            value = prop.value
            return value.decode("utf-8", "replace") if isinstance(value, bytes) else str(value)
    return ""


def peak_kib(pid):
    try:
        with open("/proc/%d/status" % pid) as f:
            for line in f:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1])
    except OSError:
        pass
    return -1


def main():
    args = sys.argv[1:]
    shown = args[:1] == ["--shown"]
    if shown:
        args = args[1:]
    want, timeout, command = args[0], float(args[1]), args[2:]
    mapped = set()
    d = display.Display()
    names = [d.intern_atom("_NET_WM_NAME"), d.intern_atom("WM_NAME")]
    root = d.screen().root
    root.change_attributes(event_mask=X.SubstructureNotifyMask)
    d.sync()

    start = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
    elapsed = None
    try:
        while elapsed is None:
            left = start + timeout - time.monotonic()
            if left <= 0 or process.poll() is not None:
                break
            if not d.pending_events():
                select.select([d.fileno()], [], [], min(left, 1.0))
            while d.pending_events() and elapsed is None:
                event = d.next_event()
                if event.type == X.CreateNotify:
                    event.window.change_attributes(event_mask=X.PropertyChangeMask)
                    d.sync()
                    window = event.window
                elif event.type == X.MapNotify:
                    mapped.add(event.window.id)
                    window = event.window
                elif event.type == X.PropertyNotify and event.atom in names:
                    window = event.window
                else:
                    continue
                if shown and window.id not in mapped:
                    continue
                if want in title_of(d, window, names):
                    elapsed = time.monotonic() - start
        # the peak of the open itself, read once the text is in
        peak = peak_kib(process.pid)
    finally:
        if process.poll() is None:
            os.kill(process.pid, signal.SIGKILL)
        process.wait()
    if elapsed is None:
        print("timeout")
        return 1
    print("%.3f %d" % (elapsed, peak))
    return 0


if __name__ == "__main__":
    sys.exit(main())
