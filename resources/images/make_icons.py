#!/usr/bin/env python3
"""Writes the SVG sources of the icon family (actions, effect types, marks) and their resource list.

One hand for all of them: a grid of 24 with a margin of 2, strokes of 1.75 with round caps and
joins, a slate line for what is there and an amber accent for what acts. Both tones read on a light
and on a dark ground; the tints are the accent let through, so they sink into either ground as a
dimmed light would. Straight strokes keep to odd multiples of 0.75: there they meet the pixels at
16 and at 24 alike. No masks, clips or style sheets, which Qt's SVG renderer ignores.
"""

import math
import pathlib

HERE = pathlib.Path(__file__).resolve().parent
ACTIONS = HERE / "icons"
EFFECTS = HERE.parent / "icons"

SLATE = "#6a7c92"
ACCENT = "#d2741a"
STROKE = 1.75
SIZES = (16, 24, 32, 48)
BODY = 0.16  # how much of the line's tone fills a body

# Tones of a light: full, mid and dim in the accent, and off.
FULL, MID, DIM, OFF = (ACCENT, 1.0), (ACCENT, 0.66), (ACCENT, 0.38), (SLATE, 1.0)


def num(value):
    return f"{value:.3f}".rstrip("0").rstrip(".") if value else "0"


def pairs(points):
    return " ".join(f"{num(x)},{num(y)}" for x, y in points)


# --- strokes and areas --------------------------------------------------------------------------


def seen(attribute, tone):
    color, opacity = tone if isinstance(tone, tuple) else (tone, 1.0)
    through = f' {attribute}-opacity="{num(opacity)}"' if opacity < 1.0 else ""
    return f'{attribute}="{color}"{through}'


def stroke(d, tone=SLATE, width=STROKE):
    wide = f' stroke-width="{num(width)}"' if width != STROKE else ""
    return f'<path d="{d}" {seen("stroke", tone)}{wide}/>'


def line(x1, y1, x2, y2, tone=SLATE, width=STROKE):
    return stroke(f"M{num(x1)},{num(y1)} L{num(x2)},{num(y2)}", tone, width)


def polyline(points, tone=SLATE):
    (x, y), rest = points[0], points[1:]
    return stroke(f"M{num(x)},{num(y)} " + " ".join(f"L{num(a)},{num(b)}" for a, b in rest), tone)


def area(d, tone):
    return f'<path d="{d}" {seen("fill", tone)}/>'


def body(d, tone=SLATE):
    """A closed outline with a breath of its own tone inside."""
    return f'<path d="{d}" {seen("stroke", tone)} fill="{tone}" fill-opacity="{num(BODY)}"/>'


def disc(x, y, r, tone):
    return f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(r)}" {seen("fill", tone)}/>'


def ring(x, y, r, tone=SLATE):
    return f'<circle cx="{num(x)}" cy="{num(y)}" r="{num(r)}" {seen("stroke", tone)}/>'


def box(x1, y1, x2, y2, r=1.5):
    """Path of a rectangle with round corners."""
    return (
        f"M{num(x1 + r)},{num(y1)} H{num(x2 - r)} A{r},{r} 0 0 1 {num(x2)},{num(y1 + r)} "
        f"V{num(y2 - r)} A{r},{r} 0 0 1 {num(x2 - r)},{num(y2)} "
        f"H{num(x1 + r)} A{r},{r} 0 0 1 {num(x1)},{num(y2 - r)} "
        f"V{num(y1 + r)} A{r},{r} 0 0 1 {num(x1 + r)},{num(y1)} Z"
    )


def on_circle(x, y, r, degrees):
    """The point at `degrees` clockwise from the top."""
    a = math.radians(degrees)
    return x + r * math.sin(a), y - r * math.cos(a)


def arc(x, y, r, start, end, tone=SLATE):
    """Clockwise arc between two angles in degrees from the top."""
    (x1, y1), (x2, y2) = on_circle(x, y, r, start), on_circle(x, y, r, end)
    large = int((end - start) % 360 > 180)
    return stroke(f"M{num(x1)},{num(y1)} A{num(r)},{num(r)} 0 {large} 1 {num(x2)},{num(y2)}", tone)


def arrow(x, tail, tip, tone=ACCENT, head=3.75):
    """Vertical arrow from the height `tail` to the height `tip`."""
    back = head if tip < tail else -head
    return line(x, tail, x, tip, tone) + polyline(
        [(x - head, tip + back), (x, tip), (x + head, tip + back)], tone
    )


def arrow_right(y, tail, tip, tone=ACCENT, head=2.25):
    return line(tail, y, tip, y, tone) + polyline(
        [(tip - head, y - head), (tip, y), (tip - head, y + head)], tone
    )


def plus(x, y, r, tone=ACCENT):
    return line(x - r, y, x + r, y, tone) + line(x, y - r, x, y + r, tone)


def star(x, y, r, tone):
    """Four points with hollow flanks."""
    k = 0.16 * r
    d = f"M{num(x)},{num(y - r)}"
    for px, py, cx, cy in (
        (r, 0, k, -k),
        (0, r, k, k),
        (-r, 0, -k, k),
        (0, -r, -k, -k),
    ):
        d += f" Q{num(x + cx)},{num(y + cy)} {num(x + px)},{num(y + py)}"
    return area(d + " Z", tone)


# --- things -------------------------------------------------------------------------------------


def folder():
    """Its top edge is open where an arrow leaves it."""
    return area(
        "M3.75,9.75 H13 V16.5 H18.5 V9.75 L20.25,11.25 V18.75 L18.75,20.25 H5.25 L3.75,18.75 Z",
        (SLATE, BODY),
    ) + stroke(
        "M12.75,9.75 H11.25 L9,6.75 H5.25 A1.5,1.5 0 0 0 3.75,8.25 V18.75 "
        "A1.5,1.5 0 0 0 5.25,20.25 H18.75 A1.5,1.5 0 0 0 20.25,18.75 V11.25 "
        "A1.5,1.5 0 0 0 18.75,9.75"
    )


def plan():
    """A folded plan, open at the top right like the folder."""
    return (
        area("M3.75,8.25 L8.25,6.75 V18.75 L3.75,20.25 Z", (SLATE, BODY))
        + area("M15.75,16.5 L20.25,15 V18.75 L15.75,20.25 Z", (SLATE, BODY))
        + polyline([(11.25, 7.75), (8.25, 6.75), (3.75, 8.25), (3.75, 20.25), (8.25, 18.75)])
        + polyline([(8.25, 18.75), (15.75, 20.25), (20.25, 18.75), (20.25, 11.25)])
        + line(8.25, 6.75, 8.25, 18.75)
    )


def tray():
    return stroke(
        "M3.75,14.25 V18.75 A1.5,1.5 0 0 0 5.25,20.25 H17.25 A1.5,1.5 0 0 0 18.75,18.75 V14.25"
    )


def lens():
    glass = body("M9.75,3 A6.75,6.75 0 0 1 9.75,16.5 A6.75,6.75 0 0 1 9.75,3 Z")
    return glass + line(14.75, 14.75, 20.25, 20.25, SLATE, 2.5)


# --- actions ------------------------------------------------------------------------------------


def open_map():
    return plan() + arrow(15.75, 15.75, 3.75)


def open_show():
    return folder() + arrow(15.75, 14.25, 3.75, head=3)


def save_show():
    return tray() + arrow(11.25, 3.75, 15)


def new_show():
    sheet = (
        "M18.75,11.25 V8.25 L14.25,3.75 H6.75 A1.5,1.5 0 0 0 5.25,5.25 V18.75 "
        "A1.5,1.5 0 0 0 6.75,20.25 H10.5"
    )
    inside = (
        "M5.25,5.25 L6.75,3.75 H14.25 L18.75,8.25 V11 H14.5 V14.5 H11 V20.25 H6.75 L5.25,18.75 Z"
    )
    fold = stroke("M14.25,3.75 V8.25 H18.75")
    return area(inside, (SLATE, BODY)) + stroke(sheet) + fold + plus(17.25, 17.25, 3.75)


def show_simulation():
    """A screen, and on it a facade with lit windows."""
    windows = "".join(
        area(box(6 + 4.5 * i, 6 + 4.5 * j, 9 + 4.5 * i, 9 + 4.5 * j, 0.5), tone)
        for j, tones in enumerate(((FULL, DIM, MID), (DIM, FULL, FULL)))
        for i, tone in enumerate(tones)
    )
    stand = line(8.25, 20.25, 15.75, 20.25) + line(12, 16, 12, 20)
    return body(box(3.75, 3.75, 20.25, 15.75)) + windows + stand


def copy_effect():
    back = stroke("M14.25,5.25 A1.5,1.5 0 0 0 12.75,3.75 H5.25 A1.5,1.5 0 0 0 3.75,5.25 V14.25 "
                  "A1.5,1.5 0 0 0 5.25,15.75")
    return back + body(box(9.75, 8.25, 20.25, 20.25), ACCENT)


def cut_effect():
    """Scissors, points up."""
    rings = ring(6.75, 17.25, 3) + ring(17.25, 17.25, 3)
    return line(8.5, 14.6, 16.5, 3.75, ACCENT) + line(15.5, 14.6, 7.5, 3.75, ACCENT) + rings


def paste_effect():
    """A board with a clip, and the sheet that is put on it."""
    board = stroke(
        "M9.75,20.25 H5.25 A1.5,1.5 0 0 1 3.75,18.75 V6.75 A1.5,1.5 0 0 1 5.25,5.25 H6.75 "
        "M14.25,5.25 H15.75 A1.5,1.5 0 0 1 17.25,6.75 V7.5"
    )
    clip = body(box(6.75, 3.75, 14.25, 6.75, 1))
    sheet = body(box(11.25, 11.25, 20.25, 20.25), ACCENT)
    return board + clip + sheet


def delete_effect():
    """A bin whose lid is raised."""
    can = body("M5.75,10.25 L6.6,18.9 A1.5,1.5 0 0 0 8.1,20.25 H15.9 A1.5,1.5 0 0 0 17.4,18.9 "
               "L18.25,10.25 Z")
    lid = line(3.75, 7.5, 19.5, 4.5, ACCENT) + stroke("M9,6.4 L8.8,4.4 L13,3.6 L13.6,5.5", ACCENT)
    return can + line(12, 13.25, 12, 17.25) + lid


def write_dmx():
    """The round connector of a light controller, and the dot that means recording."""
    cx, cy, r = 10.5, 10.5, 7.625
    pins = "".join(disc(*on_circle(cx, cy, 4.1, a), 1.15, OFF) for a in (-108, -54, 0, 54, 108))
    return arc(cx, cy, r, 166, 464) + pins + disc(17.6, 17.6, 4.0, FULL)


def zoom_in():
    return lens() + plus(9.75, 9.75, 3.25)


def zoom_out():
    return lens() + line(6.5, 9.75, 13, 9.75, ACCENT)


def pause():
    return area(box(6, 4, 10, 20, 1.25), FULL) + area(box(14, 4, 18, 20, 1.25), FULL)


# --- effects: what happens along a row of seven lights ------------------------------------------

LIGHTS = range(7)


def light_x(i):
    return 3.75 + 3 * i


def column(i, top, bottom, tone):
    """A light as a column: how far it reaches is how much it does."""
    return line(light_x(i), top, light_x(i), bottom, tone)


def row(y, tones, r=1.125):
    return "".join(disc(light_x(i), y, r, tone) for i, tone in enumerate(tones))


def fixed_color():
    return "".join(column(i, 4.5, 19.5, FULL) for i in LIGHTS)


def chase():
    tones = (FULL, MID, DIM) * 3
    return "".join(column(i, 3.75, 12.75, tones[i]) for i in LIGHTS) + arrow_right(
        18.75, 3.75, 21, SLATE
    )


def cross_fade():
    """One colour goes as the other comes."""
    parts = []
    for i in LIGHTS:
        edge = 20.25 - 2.75 * i
        if i < 6:
            parts.append(column(i, 3.75, edge - (2.0 if i else 0.0), FULL))
        if i > 0:
            parts.append(column(i, edge + 0.75, 20.25, DIM))
    return "".join(parts)


def chasing_nodes():
    """Colours stand at nodes, the lights between are mixed, and the whole travels."""
    tones = (FULL, FULL, MID, FULL, MID, DIM, MID)
    radii = (2.0, 1.0, 1.0, 3.25, 1.0, 1.0, 2.0)
    lights = "".join(disc(3 + 3 * i, 8.25, r, t) for i, (r, t) in enumerate(zip(radii, tones)))
    return lights + arrow_right(18.75, 3.75, 20.25, SLATE)


def white_wash():
    """A row of lamps that washes a wall from above."""
    lengths = (12.75, 15.75, 18.0, 18.75, 18.0, 15.75, 12.75)
    wash = "".join(
        column(i, 8.25, y - 4.25, FULL) + column(i, y - 1.75, y + 1.0, DIM)
        for i, y in enumerate(lengths)
    )
    return row(4.125, (OFF,) * 7) + wash


def video():
    """A film: play, between two rows of perforations that are lights."""
    sign = "M9.75,8.4 L16.5,12 L9.75,15.6 Z"
    play = area(sign, FULL) + stroke(sign, ACCENT)  # the stroke rounds the corners
    return row(3.75, (OFF,) * 7) + play + row(20.25, (OFF,) * 7)


def image_scroll():
    """A picture passes over the row and is taken up by it."""
    hills = area("M6,14 L10.25,8.25 L13,11.6 L14.9,9.6 L19.5,14 Z", FULL)
    return (
        stroke(box(3.75, 3.75, 21.75, 15.75))
        + hills
        + disc(17.25, 7.5, 1.25, MID)
        + row(20.25, (DIM, MID, FULL, FULL, FULL, MID, DIM))
    )


def sparkle():
    return (
        star(light_x(2), 8.6, 6.6, FULL)
        + star(light_x(5), 11.6, 4.0, MID)
        + row(20.25, (OFF, OFF, FULL, OFF, OFF, MID, OFF))
    )


def random_color():
    """Each light for itself."""
    heights = (3.0, 13.5, 6.0, 16.5, 1.5, 9.0, 4.5)
    tones = (FULL, MID, FULL, FULL, MID, DIM, FULL)
    offsets = (4.0, 0.0, -3.0, 0.0, 5.0, -2.5, 3.0)
    return "".join(
        column(i, 12 + o - h / 2, 12 + o + h / 2, t)
        for i, (h, t, o) in enumerate(zip(heights, tones, offsets))
    )


def streak():
    """A head runs along the row and draws its tail behind it."""
    tail = (
        line(3.75, 9, 12, 9, MID)
        + line(6.75, 5.25, 12.75, 5.25, DIM)
        + line(6.75, 12.75, 12.75, 12.75, DIM)
    )
    return tail + disc(17.25, 9, 3.9, FULL) + row(20.25, (DIM, DIM, MID, MID, FULL, FULL, OFF))


def sweep():
    """A beam swings over the lights."""
    x, y, r = 12, 20.25, 15.0
    angles = [-39 + 13 * i for i in LIGHTS]
    dots = "".join(
        disc(*on_circle(x, y, r, a), 1.2, t)
        for a, t in zip(angles, (OFF, OFF, DIM, MID, FULL, OFF, OFF))
    )
    beams = "".join(
        line(*on_circle(x, y, 4.0, a), *on_circle(x, y, 11.25, a), t, w)
        for a, t, w in zip(angles[2:5], (DIM, MID, FULL), (STROKE, STROKE, 2.5))
    )
    return dots + beams + disc(x, y, 1.4, OFF)


def burst():
    """From the light in the middle outwards, along the row and across it."""
    cx, cy = light_x(3), 12
    rays = "".join(
        line(*on_circle(cx, cy, 4.5, a), *on_circle(cx, cy, 6.0, a), FULL)
        + disc(*on_circle(cx, cy, 9.2, a), 1.1, MID)
        for a in (0, 45, 135, 180, 225, 315)
    )
    return rays + row(cy, (MID, FULL, FULL, FULL, FULL, FULL, MID), 1.1) + disc(cx, cy, 2.4, FULL)


def spiral():
    """An arm winds outwards over the row, dimmer the further it is."""
    cx, cy, turns, steps = light_x(3), 9.0, 1.75, 16

    def point(t):
        return on_circle(cx, cy, 0.6 + 6.4 * t, 360 * turns * t + 90)

    arm = ""
    bounds = (0.0, 0.58, 0.82, 1.0)
    for a, b, tone in zip(bounds, bounds[1:], (FULL, MID, DIM)):
        arm += polyline([point(a + (b - a) * k / steps) for k in range(steps + 1)], tone)
    return arm + row(20.25, (DIM, MID, OFF, FULL, OFF, MID, DIM))


def text():
    """A letter passes over the row."""
    letter = polyline([(6.75, 6), (6.75, 3.75), (18.75, 3.75), (18.75, 6)], FULL)
    letter += line(light_x(3), 3.75, light_x(3), 15.75, FULL) + line(10.5, 15.75, 15, 15.75, FULL)
    return letter + row(20.25, (OFF, DIM, MID, FULL, FULL, FULL, OFF))


# --- the picker's marks -------------------------------------------------------------------------


def user():
    head = "M12,3.75 A4,4 0 0 1 12,11.75 A4,4 0 0 1 12,3.75 Z"
    return body(head) + body("M4.5,20.25 A7.5,6 0 0 1 19.5,20.25 Z")


def selection():
    """A double ring that shows on every colour. Its border is 4 wide: stretch what lies between."""
    return '<path d="M1,1 H23 V23 H1 Z" stroke="#000000" stroke-width="2" ' \
        'stroke-linejoin="miter"/><path d="M3,3 H21 V21 H3 Z" stroke="#ffffff" ' \
        'stroke-width="2" stroke-linejoin="miter"/>'


def checkers():
    """The ground under colours that let light through: neutral, and a tile of two by two."""
    return area("M0,0 H24 V24 H0 Z", "#d9d9d9") + area("M0,0 H12 V12 H0 Z M12,12 H24 V24 H12 Z",
                                                       "#a6a6a6")


ACTION_ICONS = {
    "open_map": open_map,
    "open_show": open_show,
    "save_show": save_show,
    "new_show": new_show,
    "show_simulation": show_simulation,
    "copy_effect": copy_effect,
    "cut_effect": cut_effect,
    "paste_effect": paste_effect,
    "delete_effect": delete_effect,
    "write_DMX": write_dmx,
    "zoom_in": zoom_in,
    "zoom_out": zoom_out,
    "pause": pause,
}

EFFECT_ICONS = {
    "fixedColor": fixed_color,
    "chase": chase,
    "crossFade": cross_fade,
    "chasingNodeEffect": chasing_nodes,
    "whiteWash": white_wash,
    "videoEffect": video,
    "imageFade": image_scroll,
    "sparkle": sparkle,
    "randomColor": random_color,
    "streak": streak,
    "sweep": sweep,
    "burst": burst,
    "spiral": spiral,
    "text": text,
}


def write(path, drawing):
    lines = drawing().replace("/><", "/>\n  <")
    path.write_text(
        '<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="0 0 24 24">\n'
        f'<g fill="none" stroke-width="{STROKE}" stroke-linecap="round" '
        'stroke-linejoin="round">\n'
        f"  {lines}\n</g>\n</svg>\n",
        encoding="ascii",
        newline="\n",
    )


def register():
    """Writes pictures.qrc. Every PNG icon is there at all sizes; its plain name is one of them."""
    entries = [(f"images/{name}.png", f"images/{name}.png")
               for name in ("splash", "ColorSelection", "TransparentBackground")]
    for folder, names, plain in (
        ("images/icons", sorted(ACTION_ICONS), 24),
        ("images", ["userIcon"], 16),
    ):
        for name in names:
            entries.append((f"{folder}/{name}.png", f"{folder}/{plain}/{name}.png"))
            entries.append((f"{folder}/{name}@2x.png", f"{folder}/{2 * plain}/{name}.png"))
            entries += [(f"{folder}/{size}/{name}.png",) * 2 for size in SIZES]
    entries += [(f"icons/{name}.svg",) * 2 for name in sorted(EFFECT_ICONS)]
    files = "".join(
        f"        <file>{path}</file>\n" if alias == path
        else f'        <file alias="{alias}">{path}</file>\n'
        for alias, path in entries
    )
    (HERE.parent / "pictures.qrc").write_text(
        '<!DOCTYPE RCC>\n<!-- Written by images/make_icons.py. -->\n<RCC version="1.0">\n'
        f'    <qresource prefix="/">\n{files}    </qresource>\n</RCC>\n',
        encoding="ascii",
        newline="\n",
    )


def main():
    for name, drawing in ACTION_ICONS.items():
        write(ACTIONS / f"{name}.svg", drawing)
    for name, drawing in EFFECT_ICONS.items():
        write(EFFECTS / f"{name}.svg", drawing)
    write(HERE / "userIcon.svg", user)
    write(HERE / "ColorSelection.svg", selection)
    write(HERE / "TransparentBackground.svg", checkers)
    register()


if __name__ == "__main__":
    main()
