"""The program's own texts, read from its string table, so that a test never repeats one."""

import functools
import os
import re
import xml.etree.ElementTree

TABLE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "resources",
                     "LocalizedStrings_en.ts")


@functools.lru_cache(maxsize=1)
def _table():
    root = xml.etree.ElementTree.parse(TABLE).getroot()
    return {message.get("id"): message.findtext("translation") for message in root.iter("message")}


def text(key):
    """As it is shown: the mnemonic's ampersand is not."""
    return _table()[key].replace("&", "")


def mnemonic(key):
    """The letter that is pressed together with Alt, in lower case."""
    return re.search("&([^&])", _table()[key]).group(1).lower()
