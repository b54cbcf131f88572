"""The program's own texts, read from its string table, so that a test never repeats one."""

import functools
import os
import re
import xml.etree.ElementTree

RESOURCES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "resources")
language = "en"


def speak(name):
    """From now on the texts, and the programs that are started, are in that language."""
    global language
    language = name


@functools.lru_cache
def _table(name):
    path = os.path.join(RESOURCES, f"LocalizedStrings_{name}.ts")
    root = xml.etree.ElementTree.parse(path).getroot()
    return {message.get("id"): message.findtext("translation") for message in root.iter("message")}


def text(key):
    """As a screen reader has it: without the mnemonic's sign."""
    return _table(language)[key].replace("&", "")


def mnemonic(key):
    """The letter that is pressed together with Alt, in lower case."""
    return re.search("&([^&])", _table(language)[key]).group(1).lower()
