"""Movies that tell the fake encoder how to behave (tests/encoder/README.md), for tests that use the
real program without encoding anything. Their finished outputs begin with BEGIN and end with END."""

import os

BEGIN = b"OUTPUT "
END = b" THE END\n"

REPORT = 'report video="{video}" size="{size}" duration="00:00:10.00" audio="aac"'
TALK = [step for second in range(1, 6) for step in (f"progress {second}", "wait 60")]
LONG_TALK = [step for tenth in range(1, 90) for step in (f"progress {tenth / 10}", "wait 100")]
FINISH = ["write 20000", "write-text \\x20THE END\\n", "summary 10"]

# What an encoder does once it has opened its output and written a beginning.
ENCODES = {
    "quick": ["progress 5", *FINISH],
    "usual": [*TALK, *FINISH],
    "slow": [*LONG_TALK, *FINISH],
    "flood": ["progress 1", "flood 2000000", *TALK, *FINISH],
    "heir": ["grandchild 1500", *TALK, *FINISH],
    "deaf": ["on-term ignore", *LONG_TALK, *FINISH],
    "quits": ["on-term quit", *LONG_TALK, *FINISH],
    "dies": ["on-term die", *LONG_TALK, *FINISH],
    "hangs": ["progress 1", "hang"],
    "fails": [*TALK, "exit 1"],
    "aborts": ["progress 1", "abort"],
    "full": [*TALK, "write-failure No space left on device", "summary 5", "exit 1"],
    "index": [*TALK, "index-failure No space left on device"],
    "damaged": ["progress 1", "damage", "progress 2", "summary 10"],
    "silent": [*TALK],
    "empty": ["progress 1", "summary 0"],
}

# What an examination says, of movies that are otherwise usual.
PROBES = {
    "h264": [REPORT.format(video="h264", size="640x480")],
    "late": ["wait 1500", REPORT.format(video="hevc", size="1280x720")],
    "mute": ["wait 5000"],
    "sizeless": [REPORT.format(video="hevc", size="none")],
}


def scripted_movie(path, kind, lock, starts):
    """Writes one of that kind and gives its bytes. Encoders hold `lock` while they live, where the
    second of two writes its number, and note themselves in `starts`."""
    size = "1920x1080" if len(os.path.basename(path)) % 2 else "640x480"
    probe = PROBES.get(kind, [REPORT.format(video="hevc", size=size)])
    encode = [f"alone {lock}", f"log {starts}", "header", "create",
              f"write-text OUTPUT {os.path.basename(path)}\\n"]
    steps = ["#scripted movie", "[probe]", *probe, "[encode]", *encode,
             *ENCODES.get(kind, ENCODES["usual"]), ""]
    content = "\n".join(steps).encode()
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)
    return content


def is_whole(content):
    """Whether an encoder has finished that output."""
    return content.startswith(BEGIN) and content.endswith(END)
