#!/usr/bin/env python3
"""Writes the device files and the resource list from devices.csv.

    make_devices.py [DIRECTORY]

Without an argument the checked-in files are renewed: DeviceConfigFiles/*.json beside this script
and devices.qrc one folder up. With one, the same files go below that directory instead. Only
needed after a change of the table or of this script; the build takes the checked-in files.

Columns of devices.csv, one row per product and colour variant:
  name        DeviceName; the file name is the name with "_" for blanks
  type        DeviceType
  ranges      START-END or START-END:PRODUCTCODE, hexadecimal, several separated by blanks
  sft         part numbers, separated by blanks
  profiles    CHEMISTRY=PROFILE, separated by ";"; the chemistry is a text of LED_CHEMISTRY
  layout      the memory layout, a key of LAYOUTS below
  static      TOKEN=VALUE, separated by ";"
  port        DiscoverPort, empty for the usual one
  verified    "by" and "date" separated by ";", empty where the file was not verified
  bootloader  a key of BOOTLOADERS below, or empty
"""

import csv
import json
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
PROPERTY_TABLE = HERE.parent / "propertymap" / "property_map.csv"

# The fixture's mode by the value of its input-mode property. Colour fixtures are asked for their
# colour control mode: 0 native, 1 RGB in, 2 RGB in and solved, 3 native and solved, 4 RGB solved,
# 5 RGB to white, 6 intensity. Whites with a choice are asked for their input mode: 0, 1.
CALIBRATED_RGB = {"0": 0, "1": 0, "3": 0, "4": 0}
CALIBRATED_RGBA = {"0": 1, "1": 0, "2": 5, "3": 1, "4": 0}
CALIBRATED_RGBW = {"0": 2, "1": 0, "2": 6, "3": 2, "4": 0}
GLOWMATCH = {"0": 11, "1": 0, "2": 10, "3": 11, "4": 0}
FIXED_RGBA = {"0": 14, "1": 12}
FIXED_RGBW = {"0": 15, "1": 13}
INPUT_MODES = {
    0: {"0": 0, "4": 0},
    1: {"0": 3, "1": 0, "2": 7, "4": 0},
    2: {"0": 4, "1": 0, "2": 8, "3": 4, "4": 0},
    3: {"0": 2},
    4: {"0": 9, "6": 9},
    23: {"0": 1},
    24: {"0": 3},
    25: {"0": 2},
    26: {"0": 16, "1": 17},
    27: {"0": 16, "1": 16},
    28: {"1": 18},
    29: {"0": 20, "1": 20},
    30: {"1": 19},
    40: {"0": 22, "5": 23},
}
INPUT_MODES.update({i: CALIBRATED_RGB for i in (7, 10, 17)})
INPUT_MODES.update({i: CALIBRATED_RGBA for i in (5, 8, 11, 14, 18, 31, 35, 41, 44)})
INPUT_MODES.update({i: CALIBRATED_RGBW for i in (6, 9, 12, 15, 19, 32, 36, 42)})
INPUT_MODES.update({i: GLOWMATCH for i in (13, 16, 20, 33, 34, 37, 43, 45, 46)})
INPUT_MODES.update({i: FIXED_RGBA for i in (21, 38)})
INPUT_MODES.update({i: FIXED_RGBW for i in (22, 39)})


def location(token, address, default=0, user=False, fixed=False):
    """One memory location; `address` is a number, a list, or a (read, write) pair."""
    entry = {"name": token}
    if isinstance(address, tuple):
        entry["readAddress"], entry["writeAddress"] = address
    else:
        entry["address"] = address
    entry["userConfigurable"] = user
    entry["readOnly"] = fixed
    entry["defaultValue"] = default
    return entry


def span(first, count):
    return list(range(first, first + count))


def identity():
    return [
        location("SERIAL_NUMBER", span(0, 4), fixed=True),
        location("HARDWARE_REVISION", 4, 1, fixed=True),
        location("FIRMWARE_MAJOR", 5, 1, fixed=True),
        location("FIRMWARE_MINOR", 6, fixed=True),
        location("PRODUCT_ID", [7, 8], fixed=True),
    ]


def startup(channels):
    return [location(f"STARTUP_CHANNEL_{n}", 0x30 + n - 1, user=True)
            for n in range(1, channels + 1)]


def service():
    return [
        # Counters are read in one place and cleared through another.
        location("LAMP_HOURS", (span(0x60, 4), span(0x70, 4))),
        location("POWER_CYCLES", (span(0x64, 2), span(0x74, 2))),
        location("BOARD_TEMPERATURE", 0x68, fixed=True),
        location("OVER_TEMPERATURE_LIMIT", 0x69, 85),
    ]


def chemistry_location(chemistry):
    return location("LED_CHEMISTRY", 0x14, chemistry, fixed=True)


def color_fixture(chemistry, channels, halved=False):
    entries = identity() + [
        location("DMX_OFFSET", [0x10, 0x11], user=True),
        location("INPUT_RESOLUTION", 0x12, 1, user=True),
        location("DIMMING_CURVE", 0x13, 1, user=True),
        chemistry_location(chemistry),
        location("COLOR_CONTROL_MODE", 0x15, user=True),
        location("FADE_RATE", 0x17, user=True),
    ]
    if halved:
        entries.append(location("HALF_FULL_MODE", 0x16, 1, user=True))
    return entries + startup(channels) + service()


def plain_fixture(chemistry, channels):
    """Without a solver: nothing to choose but the address and the curve."""
    return identity() + [
        location("DMX_OFFSET", [0x10, 0x11], user=True),
        location("INPUT_RESOLUTION", 0x12, 1, user=True),
        location("DIMMING_CURVE", 0x13, user=True),
        chemistry_location(chemistry),
        location("PLAINWEAVE_MODE", 0x15, user=True),
    ] + startup(channels)


def white_fixture(chemistry, channels):
    return identity() + [
        location("DMX_OFFSET", [0x10, 0x11], user=True),
        location("INPUT_RESOLUTION", 0x12, 1, user=True),
        location("DIMMING_CURVE", 0x13, user=True),
        chemistry_location(chemistry),
        location("COLOR_CONTROL_MODE", 0x15, user=True),
        location("CREST_INPUT_MODE", 0x18, 1, user=True),
    ] + startup(channels) + service()


def network(first):
    return [
        location("IP_ADDRESS", span(first, 4), 0, user=True),
        location("SUBNET_MASK", span(first + 4, 4), 0, user=True),
        location("GATEWAY_ADDRESS", span(first + 8, 4), 0, user=True),
        location("DHCP_ENABLED", first + 12, 1, user=True),
    ]


def ethernet_fixture(chemistry, channels):
    return color_fixture(chemistry, channels) + network(0x80)


def rdm_fixture(chemistry, channels):
    return identity() + [
        location("DMX_OFFSET", [0x10, 0x11], user=True),
        location("INPUT_RESOLUTION", 0x12, 1, user=True),
        location("DIMMING_CURVE", 0x13, 1, user=True),
        chemistry_location(chemistry),
        location("COLOR_CONTROL_MODE", 0x15, user=True),
        location("IDENTIFY_DEVICE", 0x19),
    ] + startup(channels)


def controller(ports):
    entries = identity() + network(0x20) + [
        location("UNIVERSE_NUMBER", span(0x30, 2), user=True),
        location("PROTOCOL_VERSION", 0x32, 2, user=True),
        location("HOLD_LAST_FRAME", 0x33, 1, user=True),
        location("SIGNAL_TIMEOUT", 0x34, 5, user=True),
    ]
    for n in range(1, ports + 1):
        base = 0x40 + 8 * (n - 1)
        entries.append(location(f"PORT_{n}_TYPE", base, 1, user=True))
        entries.append(location(f"PORT_{n}_LIGHT_COUNT", [base + 1, base + 2], 50, user=True))
        entries.append(location(f"PORT_{n}_COLOR_ORDER", base + 3, user=True))
    return entries


def keypad(buttons):
    entries = identity() + network(0x20) + [
        location("BUZZER_ENABLED", 0x30, 1, user=True),
        location("BACKLIGHT_LEVEL", 0x31, 128, user=True),
        location("BACKLIGHT_TIMEOUT", 0x32, 30, user=True),
        location("KEYPAD_LOCKED", 0x33, user=True),
    ]
    for n in range(1, buttons + 1):
        base = 0x40 + 4 * (n - 1)
        entries.append(location(f"BUTTON_{n}_ACTION", base, 1, user=True))
        entries.append(location(f"BUTTON_{n}_TARGET", [base + 1, base + 2], user=True))
        entries.append(location(f"BUTTON_{n}_BACKLIGHT", base + 3, 1, user=True))
    return entries


def feeder(outputs):
    entries = identity() + [
        location("SUPPLY_VOLTAGE", [0x20, 0x21], fixed=True),
        location("SUPPLY_LOAD", 0x22, fixed=True),
        location("SOFT_START", 0x23, 1, user=True),
        location("FAN_MODE", 0x24, user=True),
        location("POWER_CYCLES", (span(0x64, 2), span(0x74, 2))),
    ]
    for n in range(1, outputs + 1):
        base = 0x30 + 4 * (n - 1)
        entries.append(location(f"OUTPUT_{n}_ENABLED", base, 1, user=True))
        entries.append(location(f"OUTPUT_{n}_CURRENT_LIMIT", [base + 1, base + 2], 2500,
                                user=True))
        entries.append(location(f"OUTPUT_{n}_LOAD", base + 3, fixed=True))
    return entries


def mesh_device():
    return identity() + [
        location("MESHLINK_ADDRESS", [0x20, 0x21], 1, user=True),
        location("MESHLINK_ROLE", 0x22, user=True),
        location("MESHLINK_TERMINATION", 0x23, user=True),
        location("MESHLINK_ERRORS", (span(0x24, 2), span(0x34, 2))),
    ]


def sensor():
    return identity() + [
        location("SENSOR_THRESHOLD", [0x20, 0x21], 200, user=True),
        location("SENSOR_HYSTERESIS", 0x22, 10, user=True),
        location("SENSOR_VALUE", span(0x24, 2), fixed=True),
    ]


LAYOUTS = {
    "color": color_fixture,
    "halved": lambda chemistry, channels: color_fixture(chemistry, channels, True),
    "plain": plain_fixture,
    "white": white_fixture,
    "net": ethernet_fixture,
    "rdm": rdm_fixture,
    "controller1": lambda *_: controller(1),
    "controller2": lambda *_: controller(2),
    "controller4": lambda *_: controller(4),
    "controller8": lambda *_: controller(8),
    "keypad4": lambda *_: keypad(4),
    "keypad8": lambda *_: keypad(8),
    "feeder2": lambda *_: feeder(2),
    "feeder4": lambda *_: feeder(4),
    "feeder8": lambda *_: feeder(8),
    "mesh": lambda *_: mesh_device(),
    "sensor": lambda *_: sensor(),
    "board": lambda *_: identity(),
}

# Bytes of a light by its chemistry, as far as they can be set at power-on.
CHANNELS = {1: 4, 2: 4, 13: 4, 15: 4, 254: 4, 3: 5, 4: 5, 5: 2, 251: 2, 252: 2,
            7: 1, 8: 1, 9: 1, 10: 1, 11: 1}

BOOTLOADERS = {
    "small": dict(BLRev=2, ProcName="K16", Heirarchy="Light", FileType="hex", WordSize=2,
                  WordCount=8192, VerLoc="1FF0", MagicLoc="1FF4", MagicFlag="5AA5", BLID=17,
                  FirmwareMajorVersion=1, PageSize=64, BL3_RevLoc="0", BL3_SFTLoc="0",
                  BL3_SFTVal=""),
    "large": dict(BLRev=3, ProcName="K32", Heirarchy="Network", FileType="bin", WordSize=4,
                  WordCount=65536, VerLoc="3FFE0", MagicLoc="3FFE8", MagicFlag="5AA5C33C",
                  BLID=33, FirmwareMajorVersion=2, PageSize=1024, BL3_RevLoc="3FFF0",
                  BL3_SFTLoc="3FFF4", BL3_SFTVal="SFT"),
}


def read_chemistries():
    """Number by text, from the row LED_CHEMISTRY of the property table."""
    with PROPERTY_TABLE.open(newline="", encoding="utf-8") as table:
        for row in csv.DictReader(table):
            if row["token"] == "LED_CHEMISTRY":
                pairs = (pair.rsplit("=", 1) for pair in row["values"][5:].split(";"))
                return {name: int(number) for name, number in pairs}
    raise SystemExit("no LED_CHEMISTRY in " + str(PROPERTY_TABLE))


def serial_range(text):
    bounds, _, code = text.partition(":")
    start, end = bounds.split("-")
    entry = {"start": start, "end": end}
    if code:
        entry["productCode"] = code
    return entry


def device(row, chemistries):
    profiles = []
    for pair in filter(None, row["profiles"].split(";")):
        chemistry, profile = pair.rsplit("=", 1)
        profiles.append({"ledChemistry": chemistry, "profileId": int(profile),
                         "inputModeMap": INPUT_MODES[int(profile)]})
    number = chemistries[profiles[0]["ledChemistry"]] if profiles else 255
    by, _, date = row["verified"].partition(";")
    entry = {
        "DeviceType": row["type"],
        "DeviceName": row["name"],
        "SerialNumberRanges": [serial_range(text) for text in row["ranges"].split()],
        "SFTNumbers": row["sft"].split(),
        "FileVerification": [{
            "Verified": bool(by),
            "Verified By": by or "Not Verified",
            "Verified Date": date or "Not Verified",
        }],
    }
    if profiles:
        entry["TintweaveProfiles"] = profiles
    entry["MemoryMap"] = LAYOUTS[row["layout"]](number, CHANNELS.get(number, 3))
    if row["static"]:
        pairs = (pair.split("=", 1) for pair in row["static"].split(";"))
        entry["StaticValues"] = [{"name": name, "value": value} for name, value in pairs]
    if row["port"]:
        entry["DiscoverPort"] = int(row["port"])
    if row["bootloader"]:
        entry["BootloaderInfo"] = BOOTLOADERS[row["bootloader"]]
    return entry


def main():
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE
    folder = target / "DeviceConfigFiles"
    resource_list = (target if len(sys.argv) > 1 else HERE.parent) / "devices.qrc"
    chemistries = read_chemistries()
    with (HERE / "devices.csv").open(newline="", encoding="utf-8") as table:
        rows = list(csv.DictReader(table))
    files = {row["name"].replace(" ", "_") + ".json": device(row, chemistries) for row in rows}
    if len(files) != len(rows):
        raise SystemExit("two products of the same name")

    folder.mkdir(parents=True, exist_ok=True)
    for stale in folder.glob("*.json"):
        if stale.name not in files:
            stale.unlink()
    for name, content in files.items():
        text = json.dumps(content, indent=2)
        (folder / name).write_text(text + "\n", encoding="utf-8")

    lines = ['<!DOCTYPE RCC>', '<RCC version="1.0">', '    <qresource prefix="/">']
    for name in ("PropertyMap.json", "TalvisRDMPropertyMap.json"):
        lines.append(f'        <file alias="PropertyMap/{name}">propertymap/{name}</file>')
    for name in sorted(files):
        path = f"DeviceConfigFiles/{name}"
        lines.append(f'        <file alias="{path}">devices/{path}</file>')
    lines += ['    </qresource>', '</RCC>']
    resource_list.write_text("\n".join(lines) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
