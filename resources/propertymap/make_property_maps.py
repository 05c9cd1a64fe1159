#!/usr/bin/env python3
"""Writes the two property maps from their tables.

    make_property_maps.py [DIRECTORY]

property_map.csv becomes PropertyMap.json, rdm_property_map.csv TalvisRDMPropertyMap.json, beside
this script or in the directory given. Only needed after a change of a table; the build takes the
checked-in files.

Columns:
  token        tokenName
  name         stringName
  values       none, "range MIN MAX", "list NAME=NUMBER;NAME=NUMBER", or in the second table
               "same": the values of the same token in the first
  description  help text
  comments     ignored by the program
  parameter    second table only: parameterID, hexadecimal
  bits         second table only: payloadSize
"""

import csv
import json
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent


def read_table(name):
    with (HERE / name).open(newline="", encoding="utf-8") as table:
        return list(csv.DictReader(table))


def values(text):
    kind, _, rest = text.partition(" ")
    if kind == "none":
        return []
    if kind == "range":
        low, high = rest.split()
        return [{"min": int(low)}, {"max": int(high)}]
    if kind == "list":
        pairs = (pair.rsplit("=", 1) for pair in rest.split(";"))
        return [{"name": name, "value": int(number)} for name, number in pairs]
    raise SystemExit("what values are these: " + text)


def entry(row, memory_values):
    text = row["values"]
    if text == "same":
        text = memory_values[row["token"]]
    result = {
        "tokenName": row["token"],
        "stringName": row["name"],
        "description": row["description"],
        "comments": row["comments"],
    }
    if "parameter" in row:
        result["parameterID"] = int(row["parameter"], 16)
        result["payloadSize"] = int(row["bits"])
    result["values"] = values(text)
    return result


def main():
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE
    target.mkdir(parents=True, exist_ok=True)
    memory = read_table("property_map.csv")
    memory_values = {row["token"]: row["values"] for row in memory}
    for rows, name in ((memory, "PropertyMap.json"),
                       (read_table("rdm_property_map.csv"), "TalvisRDMPropertyMap.json")):
        content = {"PropertyMap": [entry(row, memory_values) for row in rows]}
        text = json.dumps(content, indent=2)
        (target / name).write_text(text + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
