#!/usr/bin/env python3
"""Writes splash.svg: a palace front at night, its windows lit by a show, on a wet square.

600 x 380. The lowest 60 rows stay nearly black: two lines of white text are painted there.
"""

import pathlib
import random

HERE = pathlib.Path(__file__).resolve().parent

WIDTH, HEIGHT = 600, 380
GROUND = 312  # where the building meets the square
PITCH = 34  # of the bays
# The colours of the show from left to right.
SHOW = (
    (52, 152, 219),
    (98, 104, 232),
    (160, 84, 214),
    (222, 82, 150),
    (250, 124, 92),
    (255, 196, 104),
)


def show_color(t, lift=0.0):
    """Colour of the show at `t`, 0 to 1 across the front; `lift` moves it towards white."""
    t = min(max(t, 0.0), 1.0) * (len(SHOW) - 1)
    i = min(int(t), len(SHOW) - 2)
    rgb = [a + (b - a) * (t - i) for a, b in zip(SHOW[i], SHOW[i + 1])]
    return "#" + "".join(f"{round(c + (255 - c) * lift):02x}" for c in rgb)


def filled(fill, opacity):
    return f'fill="{fill}"' + (f' fill-opacity="{opacity:.3g}"' if opacity < 1 else "")


def rect(x, y, w, h, fill, opacity=1.0):
    place = f'x="{x:.4g}" y="{y:.4g}" width="{w:.4g}" height="{h:.4g}"'
    return f"<rect {place} {filled(fill, opacity)}/>"


def path(d, fill, opacity=1.0):
    return f'<path d="{d}" {filled(fill, opacity)}/>'


def circle(x, y, r, fill, opacity=1.0):
    return f'<circle cx="{x:.4g}" cy="{y:.4g}" r="{r:.4g}" {filled(fill, opacity)}/>'


def square(x, y, w, h):
    """Path of an opening with straight edges."""
    return f"M{x:.4g},{y:.4g} h{w:.4g} v{h:.4g} h-{w:.4g} Z"


def arched(x, y, w, h):
    """Path of an opening with a round head: `y` is its crown, `h` its whole height."""
    r = w / 2
    head = f"A{r:.4g},{r:.4g} 0 0 1 {x + w:.4g},{y + r:.4g}"
    return f"M{x:.4g},{y + h:.4g} V{y + r:.4g} {head} V{y + h:.4g} Z"


def fade(name, *stops):
    """Gradient from top to bottom."""
    inner = "".join(
        f'<stop offset="{at}" stop-color="{color}" stop-opacity="{opacity}"/>'
        for at, color, opacity in stops
    )
    return f'<linearGradient id="{name}" x1="0" y1="0" x2="0" y2="1">{inner}</linearGradient>'


def blur(name, deviation):
    return (
        f'<filter id="{name}" x="-10%" y="-10%" width="120%" height="120%">'
        f'<feGaussianBlur stdDeviation="{deviation}"/></filter>'
    )


class Front:
    """The building, drawn in layers that are stacked at the end."""

    def __init__(self):
        self.dice = random.Random(7)
        self.wall = []
        self.wash = []
        self.glow = []
        self.panes = []
        self.relief = []
        self.gradients = {}

    def gradient(self, color):
        name = "w" + color[1:]
        self.gradients[name] = fade(name, (0, color, 0.06), (0.45, color, 0.2), (1, color, 0.62))
        return f"url(#{name})"

    def window(self, d, x, y, w, h, color_at, level):
        """One opening at light `level`, 0 for dark."""
        self.panes.append(path(d, "#0b0f1c"))
        if level > 0:
            color = show_color(color_at, 0.46 * level * level)
            self.glow.append(path(d, show_color(color_at), 0.95 * level))
            self.panes.append(path(d, color, 0.4 + 0.6 * level))
        # mullion and transom
        self.panes.append(rect(x + w / 2 - 0.5, y, 1, h, "#0b0f1c", 0.75))
        self.panes.append(rect(x, y + h * 0.42, w, 1, "#0b0f1c", 0.75))

    def level(self, u, v):
        """How bright the show is at a window: a slow wave, with a few rooms left dark."""
        wave = 1.0 - 0.36 * abs(((u * 1.15 + v * 0.55) % 1.0) * 2 - 1)
        roll = self.dice.random()
        return 0.0 if roll < 0.055 else wave * (0.82 + 0.18 * roll)

    def cornice(self, x, w, y, tall=3.0, reach=3.0):
        self.relief.append(rect(x - reach, y, w + 2 * reach, tall, "#39415c"))
        self.relief.append(rect(x - reach, y, w + 2 * reach, 1, "#5b6480"))
        self.relief.append(rect(x - reach + 1, y + tall, w + 2 * reach - 2, 2.2, "#070a14", 0.55))

    def block(self, x, bays, top, floors, margin=7):
        """A part of the front: `floors` are (crown, height, width, arched) from top to bottom."""
        w = bays * PITCH + 2 * margin
        self.wall.append(rect(x, top, w, GROUND - top, "#1a2036"))
        for f, (y, h, ww, is_arched) in enumerate(floors):
            bottom = floors[f + 1][0] - 9 if f + 1 < len(floors) else GROUND
            upper = y - 9
            for b in range(bays):
                cx = x + margin + PITCH * (b + 0.5)
                u = cx / WIDTH * 1.5 - 0.25
                at = u + 0.06 * (f - 1)
                wash = self.gradient(show_color(at))
                self.wash.append(rect(cx - PITCH / 2, upper, PITCH, bottom - upper, wash))
                left, frame = cx - ww / 2, 2.2
                opening = arched if is_arched else square
                self.frame(
                    opening(left - frame, y - frame, ww + 2 * frame, h + frame), left, y + h, ww
                )
                self.window(opening(left, y, ww, h), left, y, ww, h, at, self.level(u, f / 3))
        # pilasters between the bays, and the ends
        for b in range(bays + 1):
            px = x + margin + PITCH * b
            self.relief.append(rect(px - 2, top + 12, 4, GROUND - top - 18, "#2a3250", 0.85))
            self.relief.append(rect(px - 2, top + 12, 1, GROUND - top - 18, "#59628a", 0.55))
        for y, _, _, _ in floors[1:]:
            self.cornice(x, w, y - 10, 2.4, 1.5)
        self.cornice(x, w, top, 5, 4)
        self.relief.append(rect(x - 3, GROUND - 7, w + 6, 7, "#141a2b"))
        self.relief.append(rect(x - 3, GROUND - 7, w + 6, 1, "#465071", 0.8))
        # the row of light points along the top
        points = bays * 4
        for i in range(points + 1):
            px = x + w * i / points
            at = px / WIDTH * 1.5 - 0.25
            self.glow.append(circle(px, top - 1.5, 1.6, show_color(at)))
            self.relief.append(circle(px, top - 1.5, 0.9, show_color(at, 0.55)))

    def frame(self, outline, left, sill, w):
        self.wash.append(path(outline, "#2b3350", 0.9))
        self.relief.append(rect(left - 3.5, sill, w + 7, 1.8, "#566084", 0.9))

    def pediment(self, x, w, base, rise):
        mid = x + w / 2
        gable = f"M{x - 5:.4g},{base} L{mid:.4g},{base - rise} L{x + w + 5:.4g},{base}"
        field = f"M{x + 8:.4g},{base - 3} L{mid:.4g},{base - rise + 6} L{x + w - 8:.4g},{base - 3}"
        self.wall.append(path(gable + " Z", "#242b45"))
        self.wash.append(path(field + " Z", self.gradient(show_color(0.5))))
        self.relief.append(
            f'<path d="{gable}" fill="none" stroke="#5b6480" stroke-width="1.6"/>'
        )
        self.glow.append(circle(mid, base - 11, 6, show_color(0.5)))
        self.panes.append(circle(mid, base - 11, 5, show_color(0.5, 0.35)))
        self.panes.append(rect(mid - 0.5, base - 16, 1, 10, "#0b0f1c", 0.7))
        self.panes.append(rect(mid - 5, base - 11.5, 10, 1, "#0b0f1c", 0.7))

    def layers(self):
        glow = "\n".join(self.glow)
        near = f'<g filter="url(#soft)">\n{glow}\n</g>'
        far = f'<g filter="url(#wide)" opacity="0.55">\n{glow}\n</g>'
        return "\n".join(self.wall + self.wash + [near, far] + self.panes + self.relief)


def sky():
    dice = random.Random(23)
    stars = []
    for _ in range(90):
        x, y = dice.random() * WIDTH, dice.random() ** 1.4 * 190
        r = 0.35 + 0.55 * dice.random() ** 3
        stars.append(circle(x, y, r, "#dfe6ff", 0.25 + 0.6 * dice.random()))
    night = rect(0, 0, WIDTH, HEIGHT, "url(#night)")
    return "\n".join([night, rect(0, 90, WIDTH, 240, "url(#haze)")] + stars)


def town():
    """Roofs beside the palace, far off."""
    dice = random.Random(5)
    out = []
    for start, end in ((-6, 78), (522, 606)):
        x = start
        while x < end:
            w = 14 + dice.random() * 16
            h = 40 + dice.random() * 46
            out.append(rect(x - 0.3, GROUND - h, w + 0.6, h, "#10162a"))
            slope, rise = f"{w / 2:.4g}", f"{w * 0.32:.4g}"
            roof = f"M{x:.4g},{GROUND - h + 1:.4g} v-1 l{slope},-{rise} l{slope},{rise} v1 Z"
            out.append(path(roof, "#10162a"))
            for _ in range(int(h / 16)):
                wx = x + 3 + dice.random() * (w - 7)
                wy = GROUND - h + 6 + dice.random() * (h - 18)
                out.append(rect(wx, wy, 1.6, 2.4, "#f3c77c", 0.35 + 0.3 * dice.random()))
            x += w
    return "\n".join(out)


def main():
    front = Front()
    wing = [(170, 22, 13, False), (209, 38, 14, True), (262, 42, 17, True)]
    mid = [(112, 20, 13, False), (150, 40, 15, True), (209, 38, 14, True), (262, 42, 17, True)]
    width = 4 * PITCH + 14
    left = (WIDTH - 3 * width) / 2
    front.block(left, 4, 152, wing)
    front.block(left + 2 * width, 4, 152, wing)
    front.block(left + width, 4, 94, mid)
    front.pediment(left + width, width, 94, 36)
    building = front.layers()

    below = f'x="0" y="{GROUND}" width="{WIDTH}" height="{HEIGHT - GROUND}"'
    size = f'width="{WIDTH}" height="{HEIGHT}" viewBox="0 0 {WIDTH} {HEIGHT}"'
    washes = "\n".join(front.gradients.values())
    night = fade(
        "night",
        (0, "#070b1a", 1),
        (0.5, "#131a38", 1),
        (0.82, "#2a2c52", 1),
        (1, "#0a0d18", 1),
    )
    dusk = fade(
        "dusk",
        (0, "#0a0d18", 0.05),
        (0.3, "#080b15", 0.62),
        (0.52, "#070912", 0.93),
        (1, "#05070e", 0.985),
    )
    document = f"""<svg xmlns="http://www.w3.org/2000/svg" {size}
  xmlns:xlink="http://www.w3.org/1999/xlink">
<defs>
{night}
{dusk}
<radialGradient id="haze" cx="0.5" cy="0.75" r="0.6">
<stop offset="0" stop-color="#7d5fae" stop-opacity="0.34"/>
<stop offset="1" stop-color="#7d5fae" stop-opacity="0"/>
</radialGradient>
{blur("soft", "3.2")}
{blur("wide", "11")}
{blur("wet", "2.2 5")}
<clipPath id="floor"><rect {below}/></clipPath>
{washes}
</defs>
{sky()}
{town()}
<g id="front">
{building}
</g>
<rect {below} fill="#0c101d"/>
<g clip-path="url(#floor)"><g filter="url(#wet)">
<use xlink:href="#front" transform="translate(0,{GROUND * 2}) scale(1,-1)"/>
</g></g>
<rect {below} fill="url(#dusk)"/>
</svg>
"""
    (HERE / "splash.svg").write_text(document, encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
