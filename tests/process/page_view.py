#!/usr/bin/env python3
"""What the picture in a report page holds, as JSON: page_view.py PAGE [image].

The page is read with Python's own parser, the meshes, and the image where that is asked for, are
decoded by what is written about them, and the policy's hash is worked out anew.
"""
import base64
import hashlib
import html.parser
import json
import re
import struct
import sys
import zlib


class Page(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.open = []
        self.images = []
        self.texts = {}  # of elements with an id, and of the script that runs
        self.policy = ''
        self.unclosed = []

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if attributes.get('http-equiv') == 'Content-Security-Policy':
            self.policy = attributes['content']
        if tag == 'img':
            self.images.append(attributes)
        if tag not in ('meta', 'img', 'br'):
            runs = tag == 'script' and 'type' not in attributes
            self.open.append((tag, 'script' if runs else attributes.get('id')))

    def handle_endtag(self, tag):
        if not self.open or self.open.pop()[0] != tag:
            self.unclosed.append(tag)

    def handle_data(self, data):
        for _, name in self.open:
            if name:
                self.texts[name] = self.texts.get(name, '') + data


def rows_of(png):
    """Width, height and the rows of a PNG image with 8 bits for each of 4 channels."""
    assert png[:8] == b'\x89PNG\r\n\x1a\n'
    at, data = 8, b''
    while at < len(png):
        size, kind = struct.unpack('>I4s', png[at:at + 8])
        content = png[at + 8:at + 8 + size]
        assert zlib.crc32(kind + content) == struct.unpack('>I', png[at + 8 + size:at + 12 + size])[0]
        if kind == b'IHDR':
            width, height, depth, colour = struct.unpack('>IIBB', content[:10])
        if kind == b'IDAT':
            data += content
        at += 12 + size
    channels = {2: 3, 6: 4}[colour]
    assert depth == 8
    data = zlib.decompress(data)
    length = channels * width
    rows, above = [], bytearray(length)
    for y in range(height):
        kind = data[y * (length + 1)]
        row = bytearray(data[y * (length + 1) + 1:(y + 1) * (length + 1)])
        for i in range(length):
            a = row[i - channels] if i >= channels else 0
            b = above[i]
            c = above[i - channels] if i >= channels else 0
            if kind == 1:
                row[i] = (row[i] + a) & 255
            elif kind == 2:
                row[i] = (row[i] + b) & 255
            elif kind == 3:
                row[i] = (row[i] + (a + b) // 2) & 255
            elif kind == 4:
                p = a + b - c
                nearest = min((abs(p - a), 0, a), (abs(p - b), 1, b), (abs(p - c), 2, c))[2]
                row[i] = (row[i] + nearest) & 255
        rows.append(row)
        above = row
    return width, height, channels, rows


def colours_of(png):
    """How many pixels there are, show anything, and are red, green and blue."""
    width, height, channels, rows = rows_of(png)
    found = {'width': width, 'height': height, 'shown': 0, 'red': 0, 'green': 0, 'blue': 0}
    for row in rows:
        for i in range(0, len(row), channels):
            r, g, b = row[i:i + 3]
            found['shown'] += channels == 4 and row[i + 3] > 0
            found['red'] += r > 2 * g and r > 2 * b
            found['green'] += g > 2 * r and g > 2 * b
            found['blue'] += b > 2 * r and b > 2 * g
    return found


def normal_of(x, y):
    x, y = x / 32767, y / 32767
    z = 1 - abs(x) - abs(y)
    if z < 0:
        x, y = ((1 - abs(y)) * (1 if x >= 0 else -1), (1 - abs(x)) * (1 if y >= 0 else -1))
    length = (x * x + y * y + z * z) ** 0.5
    return [round(v / length, 3) + 0.0 for v in (x, y, z)]


def triangles_of(scene, data):
    """Each triangle at each of its places: three corners and a colour for each."""
    meshes, at = [], 0
    for vertices, indices, has_normals, low, size in scene['meshes']:
        corners = struct.unpack_from('<%dH' % (4 * vertices), data, at)
        at += 8 * vertices
        points = [[low[k] + size[k] * corners[4 * i + k] / 65535 for k in range(3)]
                  for i in range(vertices)]
        normals = []
        if has_normals:
            pairs = struct.unpack_from('<%dh' % (2 * vertices), data, at)
            at += 4 * vertices
            normals = [normal_of(*pairs[2 * i:2 * i + 2]) for i in range(vertices)]
        wide = vertices > 65536
        numbers = struct.unpack_from('<%d%s' % (indices, 'I' if wide else 'H'), data, at)
        at += (indices * (4 if wide else 2) + 3) // 4 * 4
        meshes.append((points, corners[3::4], numbers, normals))
    assert at == len(data)
    result = []
    for mesh, tint, x, y, z, origin in scene['places']:
        points, colours, numbers, _ = meshes[mesh]
        placed = [[round(x[k] * p[0] + y[k] * p[1] + z[k] * p[2] + origin[k], 3) + 0.0
                   for k in range(3)] for p in points]
        shown = [scene['palette'][c - 1] if c else tint for c in colours]
        for i in range(0, len(numbers), 3):
            result.append([[placed[n], '%06x' % shown[n]] for n in numbers[i:i + 3]])
    return result, [normals for _, _, _, normals in meshes]


def main():
    page = Page()
    page.feed(open(sys.argv[1], encoding='utf-8').read())
    page.close()
    found = {'policy': page.policy, 'unclosed': page.unclosed + [tag for tag, _ in page.open],
             'images': len(page.images), 'alt': '', 'view': page.texts.get('view', '')}
    if page.images:
        kind, image = page.images[0]['src'].split(',')
        assert kind == 'data:image/png;base64'
        image = base64.b64decode(image, validate=True)
        if sys.argv[2:] == ['image']:
            found['image'] = colours_of(image)
        found['alt'] = page.images[0]['alt']
    script = page.texts.get('script')
    if script:
        found['hash'] = "'sha256-%s'" % base64.b64encode(
            hashlib.sha256(script.encode()).digest()).decode()
        found['words'] = sorted(set(re.findall(
            r'https?:|eval|Function|fetch|XMLHttp|WebSocket|import|innerHTML', script)))
        scene = json.loads(page.texts['scene'])
        data = base64.b64decode(''.join(page.texts['meshes'].split()), validate=True)
        triangles, normals = triangles_of(scene, data)
        found.update(count=scene['triangles'], camera=scene['camera'], triangles=triangles,
                     normals=normals)
    json.dump(found, sys.stdout)


if __name__ == '__main__':
    main()
