#!/usr/bin/env python3
"""Builds the maps that ship: make_sample.py FOLDER.

Lengths are world units. Every brush is the hull of a flat outline and the same outline moved along
one axis, so all corners are whole numbers. Open and save the result once in the editor or with
`ferrowand-cli convert`: the writer chooses itself which three corners name a plane.
"""
import sys

AXES = (((0, 0, 1), (1, 0, 0), (0, -1, 0)),
        ((1, 0, 0), (0, 1, 0), (0, 0, -1)),
        ((0, 1, 0), (1, 0, 0), (0, 0, -1)))
# Of the textures that are drawn to fit a face: texels.
SIZES = {'light_strip': (16, 64), 'light_amber': (32, 32), 'light_cold': (64, 32),
         '+0button': (32, 32), '+0screen': (64, 64), 'banner_red': (64, 128),
         'sign_exit': (64, 32), 'bookshelf': (64, 64), 'crate_wood': (64, 64),
         'metal_vent': (64, 48), 'trim_stone': (64, 16), 'crate_iron': (64, 64),
         'door_gate': (128, 128)}



def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def minus(a, b):
    return tuple(x - y for x, y in zip(a, b))


class Entity:
    def __init__(self, classname, keys=(), children=(), faces=()):
        self.keys = [('XMPferroflags', '0'), ('classname', classname)]
        self.keys += [(key, str(value)) for key, value in keys]
        if classname.startswith('light'):  # the class fixes these when the file is read
            self.keys = self.keys[1:] + [('XMPferroflags', '2')]
        self.children, self.faces = list(children), list(faces)

    def text(self):
        lines = ['{'] + ['\t"%s" "%s"' % key for key in self.keys]
        lines += [face_line(*face) for face in self.faces]
        return '\n'.join(lines) + '\n' + ''.join(child.text() for child in self.children) + '}\n'


def offsets(corners, texture, normal):
    """Puts the texture's corner into the face's; only for what is drawn to fit."""
    if texture not in SIZES:
        return 0, 0
    best = max(AXES, key=lambda row: abs(dot(row[0], normal)))
    return tuple(int(-min(dot(corner, axis) for corner in corners)) % size
                 for axis, size in zip(best[1:], SIZES[texture]))


def face_line(corners, texture):
    normal = cross(minus(corners[0], corners[1]), minus(corners[2], corners[1]))
    shift = offsets(corners, texture, normal)
    points = ' '.join('( %d %d %d )' % corner for corner in corners[:3])
    return '\t\t%s %s %d %d 0 1.000000 1.000000' % (points, texture, *shift)


def prism(outline, axis, low, high, texture, caps=None):
    """`outline` are corners of a convex polygon on the two other axes, in the order x, y, z."""
    def corner(point, level):
        values = list(point)
        values.insert(axis, level)
        return tuple(values)

    count = len(outline)
    middle = tuple(sum(values) / (2 * count) for values in
                   zip(*(corner(p, level) for p in outline for level in (low, high))))
    sides = [([corner(p, low), corner(p, high), corner(q, high), corner(q, low)], texture)
             for p, q in zip(outline, outline[1:] + outline[:1])]
    ends = [([corner(p, level) for p in outline], caps or texture) for level in (low, high)]
    faces = []
    for corners, name in sides + ends:
        normal = cross(minus(corners[0], corners[1]), minus(corners[2], corners[1]))
        if dot(normal, minus(corners[0], middle)) < 0:
            corners = corners[::-1]
        faces.append((corners, name))
    brush = Entity('brush', faces=faces)
    brush.keys.reverse()
    return brush


def box(x0, y0, z0, x1, y1, z1, texture, caps=None):
    return prism([(x0, y0), (x1, y0), (x1, y1), (x0, y1)], 2, z0, z1, texture, caps)


def octagon(x, y, reach, flat, z0, z1, texture, caps=None):
    corners = [(reach, flat), (flat, reach), (-flat, reach), (-reach, flat),
               (-reach, -flat), (-flat, -reach), (flat, -reach), (reach, -flat)]
    return prism([(x + u, y + v) for u, v in corners], 2, z0, z1, texture, caps)


def point(classname, x, y, z, **keys):
    return Entity(classname, [('origin', '%d %d %d' % (x, y, z)), *keys.items()])


def named(classname, name, children=(), **keys):
    return Entity(classname, [('XMPentityname', name), *keys.items()], children)


def light(x, y, z, brightness, **keys):
    return point('light', x, y, z, light=brightness, **keys)


def layer(name, state, colour, children):
    return Entity('layer', [('XMPentityname', name), ('XMPstate', state),
                            *zip(('XMPcolourr', 'XMPcolourg', 'XMPcolourb'), colour)], children)


def world(message, worldtype, layers):
    result = Entity('worldspawn', children=layers)
    result.keys += [('XMPentityname', 'worldspawn'), ('worldtype', str(worldtype)), ('sounds', '4'),
                    ('message', message), ('wad', 'quake.wad'), ('XMPqc', 'ents.qc'),
                    ('XMPversion', '1.01')]
    return result


def hidden(entity):
    classname = dict(entity.keys)['classname']
    entity.keys = [key for key in entity.keys if key[0] != 'classname']
    entity.keys += [('XMPoldclassname', classname), ('classname', 'hidden')]
    return entity


def hall():
    """x, y -256 .. 256, z 0 .. 208; open to the corridor in the east."""
    yield box(-272, -272, -16, 272, 272, 0, 'floor_flag')
    yield box(-272, -272, 208, 272, 272, 224, 'wood_floor')
    yield box(-272, -272, 0, -256, 272, 208, 'brick_brown')
    yield box(-256, -272, 0, 256, -256, 208, 'brick_brown')
    yield box(-256, 256, 0, 256, 272, 208, 'brick_brown')
    yield box(256, -272, 0, 272, -64, 208, 'brick_brown')
    yield box(256, 64, 0, 272, 272, 208, 'brick_brown')
    yield box(256, -64, 128, 272, 64, 208, 'brick_brown')


def corridor():
    """x 272 .. 528, y -64 .. 64, z 0 .. 128."""
    yield box(272, -80, -16, 528, 80, 0, 'floor_tech')
    yield box(272, -80, 128, 528, 80, 144, 'metal_panel')
    yield box(272, -80, 0, 528, -64, 128, 'metal_rib')
    yield box(272, 64, 0, 528, 80, 128, 'metal_rib')


def courtyard():
    """x 544 .. 1056, y -320 .. 320, z 0 .. 384 under the sky; a pool in the middle."""
    yield box(528, -336, -16, 720, 336, 0, 'cobble')
    yield box(976, -336, -16, 1072, 336, 0, 'cobble')
    yield box(720, -336, -16, 976, -128, 0, 'cobble')
    yield box(720, 128, -16, 976, 336, 0, 'cobble')
    yield box(704, -144, -80, 992, 144, -64, 'rubble')
    yield box(704, -144, -64, 720, 144, -16, 'rubble')
    yield box(976, -144, -64, 992, 144, -16, 'rubble')
    yield box(720, -144, -64, 976, -128, -16, 'rubble')
    yield box(720, 128, -64, 976, 144, -16, 'rubble')
    yield box(720, -128, -64, 976, 128, -8, '*water1')
    yield box(528, -336, 384, 1072, 336, 400, 'sky1')
    yield box(528, -336, 0, 544, -64, 384, 'brick_large')
    yield box(528, 64, 0, 544, 336, 384, 'brick_large')
    yield box(528, -64, 128, 544, 64, 384, 'brick_large')
    yield box(1056, -336, 0, 1072, 336, 384, 'brick_large')
    yield box(544, -336, 0, 1056, -320, 384, 'brick_large')
    yield box(544, 320, 0, 752, 336, 384, 'brick_large')
    yield box(848, 320, 0, 1056, 336, 384, 'brick_large')
    yield box(752, 320, 112, 848, 336, 384, 'brick_large')


def balcony():
    """A gallery in the south-west, 128 units up, and the stairs to it."""
    yield box(544, -320, 112, 704, -192, 128, 'wood_plank', 'wood_floor')
    for step in range(8):
        x = 704 + 32 * step
        yield box(x, -320, 0, x + 32, -256, 128 - 16 * step, 'step_stone', 'floor_stone')
    yield prism([(704, 128), (736, 128), (992, 0), (704, 0)], 1, -320, -256, 'clip')
    yield octagon(688, -208, 12, 5, 0, 112, 'wood_beam')


def vault():
    """x 624 .. 976, y 336 .. 656, z 0 .. 160; the way out is in its north wall."""
    yield box(608, 336, -16, 992, 672, 0, 'floor_blue')
    yield box(608, 336, 160, 992, 672, 176, 'ceiling_stone')
    yield box(608, 336, 0, 624, 672, 160, 'brick_blue')
    yield box(976, 336, 0, 992, 672, 160, 'brick_blue')
    yield box(624, 656, 0, 768, 672, 160, 'brick_blue')
    yield box(832, 656, 0, 976, 672, 160, 'brick_blue')
    yield box(768, 656, 112, 832, 672, 160, 'brick_blue')
    yield box(752, 672, -16, 848, 736, 0, 'floor_blue')
    yield box(752, 672, 112, 848, 736, 128, 'brick_blue')
    yield box(752, 672, 0, 768, 736, 112, 'brick_blue')
    yield box(832, 672, 0, 848, 736, 112, 'brick_blue')
    yield box(752, 736, -16, 848, 752, 128, 'brick_blue')
    yield box(768, 720, 0, 832, 728, 112, '*teleport')


def columns():
    for x in (-128, 128):
        for y in (-128, 128):
            yield box(x - 32, y - 32, 0, x + 32, y + 32, 16, 'trim_stone', 'floor_stone')
            yield octagon(x, y, 24, 10, 16, 176, 'column_stone')
            yield box(x - 32, y - 32, 176, x + 32, y + 32, 192, 'trim_stone', 'floor_stone')
    for x in (-144, 112):
        yield box(x, -256, 192, x + 32, 256, 208, 'wood_beam')


def arch():
    """Where the corridor meets the courtyard: six wedges under the ceiling."""
    curve = [(64, 72), (58, 96), (40, 116), (0, 128)]
    for (y0, z0), (y1, z1) in zip(curve, curve[1:]):
        for side in (1, -1):
            outline = [(side * y0, z0), (side * y1, z1), (side * y1, 128), (side * y0, 128)]
            yield prism(list(dict.fromkeys(outline)), 0, 496, 528, 'block_brown')


def furniture():
    yield box(384, 56, 32, 448, 64, 96, '+0screen', 'metal_plate')
    yield box(304, -64, 40, 368, -60, 88, 'metal_vent')
    for x in (320, 464):
        yield box(x, 60, 32, x + 16, 64, 96, 'light_strip')
        yield box(x, -64, 32, x + 16, -60, 96, 'light_strip')
    for y in (-32, 0):
        yield box(-16, y, 200, 16, y + 32, 208, 'light_amber')
    yield box(-256, -160, 48, -252, -96, 176, 'banner_red')
    yield box(-256, 96, 48, -252, 160, 176, 'banner_red')
    yield box(992, 240, 0, 1056, 304, 64, 'crate_wood')
    yield box(928, 256, 0, 992, 320, 64, 'crate_wood')
    yield box(1000, 248, 64, 1048, 296, 112, 'crate_iron')
    yield box(768, 652, 120, 832, 656, 152, 'sign_exit')
    yield box(768, 312, 120, 832, 320, 152, 'light_cold')
    for x0, y0, x1, y1 in ((704, -144, 720, 144), (976, -144, 992, 144),
                           (720, -144, 976, -128), (720, 128, 976, 144)):
        yield box(x0, y0, 0, x1, y1, 8, 'trim_stone', 'floor_stone')
    yield prism([(-256, 0), (-240, 0), (-256, 16)], 1, -256, 256, 'trim_stone')


def movers():
    for name, y, angle in (('gate left', -64, 270), ('gate right', 0, 90)):
        yield named('func_door', name, [box(260, y, 0, 268, y + 64, 128, 'door_gate')],
                    angle=angle, speed=120, wait=4, sounds=3)
    yield named('func_door', 'vault door', [box(752, 324, 0, 848, 332, 112, 'metal_rivet')],
                targetname='vault', angle=-1, wait=-1, sounds=4,
                message='Find the button by the pool')
    yield named('func_button', 'vault button', [box(1048, 16, 40, 1056, 48, 72, '+0button')],
                target='vault', angle=0, wait=-1, sounds=2)
    yield named('func_train', 'ferry', [box(736, -112, 8, 800, -48, 16, 'metal_tread'),
                                        box(740, -108, 0, 796, -52, 8, 'metal_beam')],
                target='ferry0', speed=64, sounds=1)
    stops = [(736, -112, 0), (912, -112, 0), (912, 48, 0), (736, 48, 0)]
    for number, stop in enumerate(stops):
        name, following = 'ferry%d' % number, 'ferry%d' % ((number + 1) % len(stops))
        yield point('path_corner', *stop, targetname=name, XMPentityname=name, target=following,
                    wait=2 if number % 2 == 0 else 0)


def triggers():
    yield named('trigger_once', 'ambush', [box(624, 400, 0, 976, 416, 96, 'trigger')],
                target='ambush', message='You are not alone')
    yield named('trigger_secret', 'gallery secret',
                [box(544, -320, 128, 608, -192, 192, 'trigger')])
    yield named('trigger_changelevel', 'way out', [box(768, 704, 0, 832, 720, 112, 'trigger')],
                map='start')


def inhabitants():
    yield point('info_player_start', -192, 0, 24, angle=0)
    yield point('info_player_coop', -192, 64, 24, angle=0)
    for x, y, z, angle in ((-192, -192, 24, 45), (592, 256, 24, 315), (1000, -280, 24, 135),
                           (664, -280, 152, 90), (656, 624, 24, 315)):
        yield point('info_player_deathmatch', x, y, z, angle=angle)
    yield point('info_intermission', 560, -300, 320, mangle='25 45 0')
    yield point('info_null', 800, 680, 16, targetname='exit_spot')
    yield point('monster_dog', 400, 0, 24, angle=180)
    yield point('monster_army', 640, 96, 24, angle=180)
    yield point('monster_army', 1000, 0, 24, angle=180)
    yield point('monster_ogre', 600, -240, 152, angle=45, spawnflags=256)
    yield point('monster_knight', 656, 560, 24, angle=270, targetname='ambush', spawnflags=1)
    yield point('monster_knight', 944, 560, 24, angle=270, targetname='ambush', spawnflags=1)
    yield point('weapon_supershotgun', 208, -208, 8)
    yield point('item_shells', -224, 192, 8)
    yield point('item_health', -224, -224, 8)
    yield point('item_health', 304, 24, 8, spawnflags=1)
    yield point('item_armor2', 592, -288, 136)
    yield point('weapon_nailgun', 800, 500, 8)
    yield point('item_spikes', 640, 352, 8, spawnflags=1)
    yield point('item_artifact_super_damage', 848, 0, -32)
    yield point('misc_explobox', 560, 272, 8)
    yield point('ambient_drip', 848, 96, 16)
    yield point('ambient_comp_hum', 416, 40, 64)


def lamps():
    yield light(0, 0, 176, 300, XMPentityname='hall lamp')
    for x, y in ((-192, -192), (-192, 192), (192, -192), (192, 192)):
        yield point('light_torch_small_walltorch', x, y, 96, light=180)
    for x in (328, 472):
        yield light(x, 0, 104, 160)
    yield light(400, 0, 112, 140, style=10, XMPentityname='broken lamp')
    for x, y in ((608, -240), (608, 240), (992, -240), (992, 240)):
        yield light(x, y, 320, 300)
    yield light(848, 0, -32, 150, XMPentityname='pool light', style=2)
    yield light(800, 300, 104, 150)
    yield light(800, 480, 136, 300, targetname='vault', spawnflags=1, XMPentityname='vault lamp')
    yield light(800, 600, 144, 250, target='exit_spot', angle=50, XMPentityname='exit spotlight')


def bookcase():
    """Stands on the origin, its back towards +y."""
    return [box(-64, 8, 8, 64, 16, 88, 'wood_dark'), box(-64, -16, 0, 64, 16, 8, 'wood_dark'),
            box(-64, -16, 88, 64, 16, 96, 'wood_dark'), box(-64, -16, 8, -56, 8, 88, 'wood_beam'),
            box(56, -16, 8, 64, 8, 88, 'wood_beam'), box(-56, -8, 8, 56, 8, 88, 'bookshelf')]


def library():
    yield named('templateClass', 'bookcase', bookcase())
    yield named('templateInstance', 'bookcase by the gate', XMPclass='bookcase',
                origin='240 176 0', angle=270)
    yield named('templateInstance', 'tall bookcase', XMPclass='bookcase', origin='0 240 0',
                XMPscalex=1.5, XMPscaley=1, XMPscalez=1.25)


def put_away():
    yield hidden(box(-96, -256, 0, -32, -192, 64, 'crate_wood'))
    yield hidden(point('item_rockets', 0, -240, 8))


def sample():
    embedded = named('embed', 'altar', origin='800 440 0', XMPminx=-48, XMPminy=-48, XMPminz=0,
                     XMPmaxx=48, XMPmaxy=48, XMPmaxz=32, XMPfilename='maps/altar.xmp')
    structure = [*hall(), *corridor(), *courtyard(), *vault(),
                 *movers(), *triggers(), *inhabitants()]
    detail = [*columns(), *arch(), *balcony(), *furniture(), *library(), embedded, *put_away()]
    spare = [box(840, 480, 0, 888, 528, 48, 'crate_iron'), light(864, 504, 72, 120)]
    return world('The Iron Courtyard', 0, [
        layer('structure', 0, (0.8, 0.1, 0.1), structure),
        layer('detail', 0, (0.1, 0.5, 0.2), detail),
        layer('lights', 0, (0.9, 0.7, 0), lamps()),
        layer('ideas', 3, (0.4, 0.4, 0.4), spare)])


def altar():
    """What the sample map embeds."""
    return world('Altar', 0, [layer('layer1', 0, (0.8, 0.1, 0.1), [
        octagon(0, 0, 48, 20, 0, 8, 'block_grey'), octagon(0, 0, 40, 16, 8, 16, 'block_grey'),
        box(-24, -16, 16, 24, 16, 32, 'trim_blue')])])


def main():
    for name, make in (('sample', sample), ('altar', altar)):
        with open('%s/%s.xmp' % (sys.argv[1], name), 'w', newline='\n') as file:
            file.write(make().text())


if __name__ == '__main__':
    main()
