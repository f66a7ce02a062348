#!/usr/bin/env python3
"""Writes the settings files that are too long to write by hand."""
import pathlib

here = pathlib.Path(__file__).parent

lines = ["[General]", "AutoLogin=false", "ProfileList=" + '"' + ";".join(f"p{i:02}" for i in range(33)) + '"',
         "ClientCertFile\\size=2000000000"]
for i in range(33):
    lines += ["", f"[p{i:02}]", f"ConnectionName=p{i:02}", f"Server=host{i}", "GatewayCount=2147483647",
              "GatewayList\\size=2000000000", "GatewayList\\2\\Name=far", f"GatewayList\\2\\Addr=10.0.0.{i}",
              "GatewayList\\2147483647\\Name=farther", "ClusterCount=-5"]
(here / "oversized.ini").write_text("\n".join(lines) + "\n")

name = "\u5f20" * 42 + "ab"  # 128 bytes
key = "".join("%%U%04X" % ord(c) if ord(c) > 127 else c for c in name)
(here / "chinese.ini").write_text(
    "[General]\nAutoLogin=true\nDefaultProfile=\u529e\u516c\u5ba4\n"
    f'ProfileList="\u529e\u516c\u5ba4;{name}"\n\n'
    "[%U529E%U516C%U5BA4]\nConnectionName=\u529e\u516c\u5ba4\nServer=\u7f51\u5173.example\nUserName=\u738b\n"
    "RememberPwd=true\nSFMode=1\nPassword=c3RvcmVk\nLastAuthType=1\n\n"
    f"[{key}]\nConnectionName={name}\nServer=long\n", encoding="utf-8")
