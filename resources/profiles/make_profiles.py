#!/usr/bin/env python3
"""Writes the fixture primaries from fixture_channels.csv, the one table to edit.

    resources/FixtureProfiles.xml      the profiles marked `in_file`, both primary sets
    color/BuiltInPrimaries.inc         every profile, for when the file cannot be read

The table has one row per channel: CIE 1931 x and y and the relative luminous flux of the emitter,
calibrated (what every unit of the type reaches) and nominal (data sheet). Empty nominal columns
mean that the nominal values are the calibrated ones. An empty label gives the channel no name.
A fixture of two whites has three rows: its second lamp is the third, as blue is of RGB, and the
row between is the even mix that green asks for.

Blue is chosen with the y/x of its profile's red where the emitters allow it: the solver divides by
y/x X - Y of an emitter in single precision, and loses digits where a target has an emitter's y/x.

Tristimulus values are scaled so that the nominal Y of the first three channels adds up to 1, and
rounded to four decimals. The script refuses a table in which a calibrated red, green or blue
cannot be mixed from the nominal emitters: colours are clipped to the calibrated triangle, and the
nominal set would show such a clipped colour as black.
"""

import csv
import pathlib
import sys
from decimal import ROUND_HALF_UP, Decimal
from xml.sax.saxutils import quoteattr

HERE = pathlib.Path(__file__).resolve().parent
TABLE = HERE / "fixture_channels.csv"
XML = HERE.parent / "FixtureProfiles.xml"
INC = HERE.parent.parent / "color" / "BuiltInPrimaries.inc"
PROFILES = 47


def tristimulus(x, y, flux, scale):
    """X, Y, Z of an emitter, to four decimals."""
    x, y, luminance = Decimal(x), Decimal(y), Decimal(flux) / scale
    values = (x / y * luminance, luminance, (1 - x - y) / y * luminance)
    return [value.quantize(Decimal("0.0001"), ROUND_HALF_UP) for value in values]


def text(value):
    """A number as the profile file writes it: no zero before the point."""
    written = str(value)
    return written[1:] if written.startswith("0.") else written


def chromaticity(xyz):
    total = float(sum(xyz))
    return float(xyz[0]) / total, float(xyz[1]) / total


def cross(a, b, p):
    return (b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0])


def inside(triangle, point):
    sides = [cross(triangle[k], triangle[(k + 1) % 3], point) for k in range(3)]
    return min(sides) >= -1e-12 or max(sides) <= 1e-12


def read_table():
    profiles = {}
    with TABLE.open(newline="", encoding="utf-8") as handle:
        for row in csv.DictReader(handle):
            number = int(row["id"])
            profile = profiles.setdefault(
                number, {"name": row["name"], "in_file": row["in_file"] == "yes", "rows": []})
            if int(row["channel"]) != len(profile["rows"]):
                sys.exit(f"profile {number}: channels out of order")
            profile["rows"].append(row)
    if sorted(profiles) != list(range(PROFILES)):
        sys.exit(f"{TABLE.name} must hold the profiles 0 to {PROFILES - 1}")
    return profiles


def convert(number, profile):
    """Adds `calibrated` and `nominal`, a list of X, Y, Z each, and `own_nominal`."""
    rows = profile["rows"]
    profile["own_nominal"] = all(row["nominal_x"] for row in rows)
    nominal = "nominal_" if profile["own_nominal"] else ""
    scale = sum(Decimal(row[nominal + "flux"]) for row in rows[:3])
    profile["calibrated"] = [tristimulus(r["x"], r["y"], r["flux"], scale) for r in rows]
    profile["nominal"] = [
        tristimulus(r[nominal + "x"], r[nominal + "y"], r[nominal + "flux"], scale) for r in rows]
    if len(rows) >= 3:
        corners = [chromaticity(xyz) for xyz in profile["nominal"][:3]]
        for row, xyz in zip(rows[:3], profile["calibrated"]):
            if not inside(corners, chromaticity(xyz)):
                sys.exit(f"profile {number}: calibrated {row['label']} is out of nominal reach")


def write_xml(profiles):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<Profiles>"]
    for number, profile in sorted(profiles.items()):
        if not profile["in_file"]:
            continue
        lines.append(f'    <Profile index="{number}" name={quoteattr(profile["name"])}>')
        channels = zip(profile["rows"], profile["calibrated"], profile["nominal"])
        for row, calibrated, nominal in channels:
            values = " ".join(f'{key}="{text(value)}"' for key, value in
                              zip(("X", "Y", "Z", "Xn", "Yn", "Zn"), calibrated + nominal))
            lines.append(f'        <Channel index="{row["channel"]}" '
                         f'name={quoteattr(row["file_label"])} {values}/>')
        lines.append("    </Profile>")
    lines.append("</Profiles>")
    XML.write_text("\n".join(lines) + "\n", encoding="utf-8")


def write_inc(profiles):
    lines = ["// Written by resources/profiles/make_profiles.py; edit fixture_channels.csv instead.",
             "// Profile, primary set, channel name, X, Y, Z."]
    for number, profile in sorted(profiles.items()):
        sets = [profile["calibrated"]] + ([profile["nominal"]] if profile["own_nominal"] else [])
        for primary_set, channels in enumerate(sets):
            for row, xyz in zip(profile["rows"], channels):
                values = ", ".join(str(value) for value in xyz)
                lines.append(f'{{{number}, {primary_set}, "{row["label"]}", {values}}},')
    INC.write_text("\n".join(lines) + "\n", encoding="utf-8")


def main():
    profiles = read_table()
    for number, profile in sorted(profiles.items()):
        convert(number, profile)
    write_xml(profiles)
    write_inc(profiles)


if __name__ == "__main__":
    main()
