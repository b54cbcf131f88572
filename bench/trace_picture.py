"""Draws one job of a trace as SVG: a lane for everybody who is at work, the milliseconds from left to
right. Long phases are squeezed, and their lengths told."""

from xml.sax.saxutils import escape

MS = 1e6
LEFT, WIDTH, LANE, TOP = 190, 1180, 26, 96
LONGEST, CUT = 130 * MS, 30 * MS  # a phase that lasts longer is drawn as short as that
COLOURS = {"works": "#4c78a8", "fsync": "#e45756", "loads": "#f2b84b", "ffprobe": "#b279a2",
           "ffmpeg": "#54a24b"}


class Axis:
    """Where a moment is drawn. All phases have one scale but for the long ones, which are squeezed."""

    def __init__(self, phases):
        self._phases = phases
        self._lengths = [CUT if self.is_squeezed(phase) else phase.end - phase.begin
                         for phase in phases]
        self.scale = WIDTH / sum(self._lengths)  # pixels a nanosecond

    @staticmethod
    def is_squeezed(phase):
        return phase.end - phase.begin > LONGEST

    def at(self, moment):
        place = LEFT
        for phase, length in zip(self._phases, self._lengths):
            if moment <= phase.end:
                share = max(0, moment - phase.begin) / max(1, phase.end - phase.begin)
                return place + length * self.scale * share
            place += length * self.scale
        return place


def draw(job):
    lanes = job.lanes()
    axis = Axis(job.phases)
    height = TOP + len(lanes) * LANE + 34 + 17 * ((len(job.phases) + 1) // 2) + 12
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{LEFT + WIDTH + 20}" height="{height}" '
           f'viewBox="0 0 {LEFT + WIDTH + 20} {height}" font-family="sans-serif" font-size="12">',
           '<rect width="100%" height="100%" fill="white"/>',
           f'<text x="12" y="22" font-size="15" font-weight="bold">One job: {job.total:.0f} ms from '
           f'the outcome before it to its own; {job.besides:.0f} ms besides ffmpeg and the demanded '
           'seconds</text>',
           '<text x="12" y="42" fill="#555">Coloured is who is on its way, white who waits. The '
           'numbers are those of the phases below.</text>']
    bottom = TOP + len(lanes) * LANE
    for number, phase in enumerate(job.phases, 1):
        begin, end = axis.at(phase.begin), axis.at(phase.end)
        shade = "#f3f3f3" if number % 2 else "#fafafa"
        out.append(f'<rect x="{begin:.1f}" y="{TOP - 22}" width="{max(end - begin, 0.5):.1f}" '
                   f'height="{bottom - TOP + 22}" fill="{shade}"/>')
        if end - begin > 9:
            out.append(f'<text x="{(begin + end) / 2:.1f}" y="{TOP - 8}" text-anchor="middle" '
                       f'fill="#333">{number}</text>')
    for row, lane in enumerate(lanes):
        y = TOP + row * LANE
        out.append(f'<text x="{LEFT - 10}" y="{y + 17}" text-anchor="end">{escape(lane.name)}</text>')
        out.append(f'<line x1="{LEFT}" x2="{LEFT + WIDTH}" y1="{y + LANE}" y2="{y + LANE}" '
                   'stroke="#ddd"/>')
        for block in lane.blocks:
            begin, end = axis.at(block.begin), axis.at(block.end)
            colour = COLOURS.get(block.what, COLOURS["works"])
            out.append(f'<rect x="{begin:.1f}" y="{y + 5}" width="{max(end - begin, 0.8):.1f}" '
                       f'height="{LANE - 10}" fill="{colour}">'
                       f'<title>{escape(block.what)}: {(block.end - block.begin) / MS:.2f} ms</title>'
                       '</rect>')
    for phase in filter(axis.is_squeezed, job.phases):
        middle = (axis.at(phase.begin) + axis.at(phase.end)) / 2
        out.append(f'<text x="{middle:.1f}" y="{TOP - 28}" text-anchor="middle" fill="#888">'
                   f'{phase.milliseconds:.0f} ms, squeezed</text>')
    out += scale_of(axis, bottom)
    half = (len(job.phases) + 1) // 2
    for number, phase in enumerate(job.phases):
        x, y = 12 + WIDTH // 2 * (number // half), bottom + 50 + 17 * (number % half)
        out.append(f'<text x="{x}" y="{y}">{number + 1}. {escape(phase.what)}: '
                   f'<tspan font-weight="bold">{phase.milliseconds:.1f} ms</tspan> '
                   f'<tspan fill="#777">({escape(phase.who)})</tspan></text>')
    return "\n".join(out + ["</svg>", ""])


def scale_of(axis, bottom):
    length = 10 * MS * axis.scale
    return [f'<line x1="{LEFT}" x2="{LEFT + length:.1f}" y1="{bottom + 12}" y2="{bottom + 12}" '
            'stroke="#333" stroke-width="2"/>',
            f'<text x="{LEFT + length + 6:.1f}" y="{bottom + 16}">10 ms</text>']
