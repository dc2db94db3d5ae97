#!/usr/bin/env python3
"""Glidepath against a bare Qt WebEngine view, on a virtual screen with a sound server.

Alternating, in one run: (a) Glidepath from process start to the intro on screen, from the
intro's click to "[Done Loading Document]" of a local page, and from the main window's creation
to that title; (b) bench/bareview from process start to the same page loaded. Then, with the
last Glidepath still running, the processor time of its whole process tree over 10 idle seconds
with the main window alone and with the browser status window open too, and the resident memory
(PSS) of the tree, next to the bare view's.

Last, the platform's drawing budgets (bench/drawing): windowless lines and batched window
drawing, each with its goal.

Usage: python3 bench/run.py [runs]   (after a build; the build directory is ./build)
       python3 bench/run.py drawing  (the drawing budgets alone)
       python3 bench/run.py accessories  (the note pad's save and the doodle pad's segments)
"""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build")
PROGRAM = os.path.join(BUILD, "Glidepath")
BARE = os.path.join(BUILD, "bench", "bareview")
PAGE = os.path.join(PROGRAM, "Start", "index.html")
IDLE_SECONDS = 10
TICKS = os.sysconf("SC_CLK_TCK")


def now_ms():
    return time.monotonic() * 1000


def free_display():
    for n in range(140, 180):
        if not os.path.exists(f"/tmp/.X{n}-lock") and not os.path.exists(f"/tmp/.X11-unix/X{n}"):
            return f":{n}"
    sys.exit("bench: no free X display")


def start_session(work):
    display = free_display()
    xvfb = subprocess.Popen(["Xvfb", display, "-screen", "0", "1280x1024x24", "-dpi", "96", "-nolisten", "tcp"],
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.makedirs(f"{work}/pulse", exist_ok=True)
    pulse = subprocess.Popen(
        ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm=yes", "--use-pid-file=no",
         "-L", "module-null-sink sink_name=null",
         "-L", f"module-native-protocol-unix socket={work}/pulse/native auth-anonymous=1"],
        env=dict(os.environ, PULSE_RUNTIME_PATH=f"{work}/pulse"),
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    env = dict(os.environ, DISPLAY=display, PULSE_SERVER=f"unix:{work}/pulse/native", XDG_RUNTIME_DIR=work)
    for _ in range(100):
        if subprocess.run(["xdpyinfo"], env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0:
            break
        time.sleep(0.1)
    return env, [xvfb, pulse]


def tree(pid):
    """The process and all its descendants."""
    children = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as f:
                    ppid = int(f.read().rsplit(")", 1)[1].split()[1])
                children.setdefault(ppid, []).append(int(entry))
            except OSError:
                pass
    pids, todo = [], [pid]
    while todo:
        p = todo.pop()
        pids.append(p)
        todo.extend(children.get(p, []))
    return pids


def cpu_ticks(pids):
    total = 0
    for p in pids:
        try:
            with open(f"/proc/{p}/stat") as f:
                fields = f.read().rsplit(")", 1)[1].split()
            total += int(fields[11]) + int(fields[12])
        except OSError:
            pass
    return total


def pss_kib(pids):
    total = 0
    for p in pids:
        try:
            with open(f"/proc/{p}/smaps_rollup") as f:
                for line in f:
                    if line.startswith("Pss:"):
                        total += int(line.split()[1])
        except OSError:
            pass
    return total


def idle_cpu_percent(pid):
    pids = tree(pid)
    before = cpu_ticks(pids)
    time.sleep(IDLE_SECONDS)
    return 100.0 * (cpu_ticks(pids) - before) / TICKS / IDLE_SECONDS


def wait_line(path, needle, timeout=60):
    """The time stamp of the first line of the log holding needle."""
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        with open(path, errors="replace") as f:
            for line in f:
                if needle in line:
                    return float(line.split()[1])
        time.sleep(0.02)
    sys.exit(f"bench: gave up waiting for {needle!r} in {path}")


def run_glidepath(env, work, n):
    program = os.path.join(work, f"glidepath-{n}")
    shutil.copytree(PROGRAM, program)
    with open(os.path.join(program, "ThemeDir.INI"), "w") as f:
        f.write(f"[Theme Directory]\r\nDIR={program}/Default\r\n")
    with open(os.path.join(program, "HomePage.TXT"), "w") as f:
        f.write("file://" + PAGE)
    log = os.path.join(work, f"glidepath-{n}.log")
    start = now_ms()
    proc = subprocess.Popen([os.path.join(program, "glidepath")], stderr=open(log, "w"), stdout=subprocess.DEVNULL,
                            env=dict(env, QT_LOGGING_RULES="glidepath.timing=true"))
    intro = wait_line(log, "painted IntroFRM")
    time.sleep(0.5)
    click = now_ms()
    subprocess.run(["xdotool", "mousemove", "640", "512", "click", "1"], env=env, check=True)
    done = wait_line(log, "caption MainFRM Glidepath - [Done Loading Document]")
    created = wait_line(log, "creating MainFRM")
    return proc, log, {"intro": intro - start, "click_to_done": done - click, "load": done - created}


def run_bare(env, work):
    start = now_ms()
    proc = subprocess.Popen([BARE, "file://" + PAGE], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=env, text=True)
    line = proc.stdout.readline()
    return proc, float(line.split()[1]) - start


def stop(proc):
    proc.kill()
    proc.wait()


def main():
    runs = int(sys.argv[1]) if len(sys.argv) > 1 else 5
    work = tempfile.mkdtemp(prefix="glidepath-bench-")
    env, session = start_session(work)
    try:
        glide, bare = [], []
        for n in range(runs):
            proc, log, times = run_glidepath(env, work, n)
            glide.append(times)
            last = (proc, log) if n == runs - 1 else None
            if not last:
                stop(proc)
            bproc, loaded = run_bare(env, work)
            bare.append(loaded)
            if n < runs - 1:
                stop(bproc)

        time.sleep(3)
        proc, log = last
        glide_pss = pss_kib(tree(proc.pid))
        bare_pss = pss_kib(tree(bproc.pid))
        bare_idle = idle_cpu_percent(bproc.pid)
        stop(bproc)
        main_idle = idle_cpu_percent(proc.pid)
        # Tools, then Browser Status, on the main window's menu bar at the screen's top left.
        subprocess.run(["xdotool", "mousemove", "362", "9", "click", "1"], env=env, check=True)
        time.sleep(0.5)
        subprocess.run(["xdotool", "mousemove", "390", "33", "click", "1"], env=env, check=True)
        wait_line(log, "painted BrowserStatusFRM", timeout=10)
        time.sleep(2)
        status_idle = idle_cpu_percent(proc.pid)
        stop(proc)
    finally:
        for p in session:
            p.kill()
        shutil.rmtree(work, ignore_errors=True)

    med = lambda xs: statistics.median(xs)
    load = med([g["load"] for g in glide])
    print(f"runs: {runs} of each, alternating; medians in milliseconds")
    print(f"Glidepath: process start to intro on screen       {med([g['intro'] for g in glide]):8.1f}  (goal 300)")
    print(f"Glidepath: intro click to [Done Loading Document] {med([g['click_to_done'] for g in glide]):8.1f}")
    print(f"Glidepath: main window made to [Done Loading Document] {load:8.1f}")
    print(f"bare view: process start to page loaded           {med(bare):8.1f}")
    print(f"ratio Glidepath load / bare view load             {load / med(bare):8.3f}  (goal 1.05)")
    print(f"idle CPU, main window alone                       {main_idle:8.2f} % of a core  (goal 0.5)")
    print(f"idle CPU, with the browser status window          {status_idle:8.2f} % of a core  (goal 1.0)")
    print(f"idle CPU, bare view                               {bare_idle:8.2f} % of a core")
    print(f"memory (PSS of the tree): Glidepath {glide_pss / 1024:.1f} MiB, bare view {bare_pss / 1024:.1f} MiB, "
          f"ratio {glide_pss / bare_pss:.3f}  (goal 1.05)")
    print_drawing()


def print_drawing(benches=("drawingbench", "richtextbench", "idlebench"), timeout=300):
    """The platform's drawing and text budgets, from bench/drawing and bench/richtext."""
    work = tempfile.mkdtemp(prefix="glidepath-drawing-")
    env, session = start_session(work)
    try:
        for bench in benches:
            out = subprocess.run([os.path.join(BUILD, "bench", bench)], env=env, capture_output=True,
                                 text=True, timeout=timeout).stdout
            print(out, end="")
    finally:
        for p in session:
            p.kill()
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    if sys.argv[1:] == ["drawing"]:
        print_drawing()
    elif sys.argv[1:] == ["accessories"]:
        print_drawing(("accessorybench",), timeout=900)
    else:
        main()
