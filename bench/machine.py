"""What the figures were measured on."""

import os
import platform
import re
import subprocess


def _first_line(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=False,
                              stdin=subprocess.DEVNULL).stdout.split("\n")[0]
    except OSError:
        return "unknown"


def _field(path, name):
    try:
        with open(path, encoding="utf-8") as file:
            found = re.search(rf"^{name}\s*[:=]\s*(.*)$", file.read(), re.MULTILINE)
    except OSError:
        return "unknown"
    return found.group(1).strip().strip('"') if found else "unknown"


def describe():
    memory = int(_field("/proc/meminfo", "MemTotal").split()[0]) / 1024 / 1024
    qt = _first_line("dpkg-query", "-W", "-f=${Version}", "libqt6widgets6") or "unknown"
    return [
        ("processor", f"{_field('/proc/cpuinfo', 'model name')}, {os.cpu_count()} cores"),
        ("memory", f"{memory:.0f} GiB"),
        ("system", f"{_field('/etc/os-release', 'PRETTY_NAME')}, kernel {platform.release()}"),
        ("toolkit", f"Qt {qt}"),
        ("encoder", _first_line("ffmpeg", "-version").split(" Copyright")[0]),
        ("desktop", "Xvfb 1280x800x24, openbox, a session bus"),
    ]


def load():
    return os.getloadavg()[0]
