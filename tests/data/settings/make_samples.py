#!/usr/bin/env python3
"""Writes the settings file whose escapes are too long to write by hand."""
import pathlib

here = pathlib.Path(__file__).parent

name = "\u5f20" * 42 + "ab"  # 128 bytes
key = "".join("%%U%04X" % ord(c) if ord(c) > 127 else c for c in name)
(here / "chinese.ini").write_text(
    "[General]\nAutoLogin=true\nDefaultProfile=\u529e\u516c\u5ba4\nUUID=0123456789ABCDEF0123456789ABCDEF\n"
    f'ProfileList="\u529e\u516c\u5ba4;{name}"\n\n'
    "[%U529E%U516C%U5BA4]\nConnectionName=\u529e\u516c\u5ba4\nServer=\u7f51\u5173.example\nUserName=\u738b\n"
    "RememberPwd=true\nSFMode=1\nPassword=c3RvcmVk\nLastAuthType=1\n\n"
    f"[{key}]\nConnectionName={name}\nServer=long\n", encoding="utf-8")
