"""Points at which a script picks, and whether a drawing shows there what the script expects."""
from dxf.reader import first

NEAR = 0.075  # of the clearance: curves are looked at as chords


class Pick:
    """A place and the layers that a pick there means: the object's, its innermost reference's, its outermost one's."""

    def __init__(self, x, y, layer, innermost=None, outermost=None):
        self.x, self.y = round(x, 1), round(y, 1)
        self.layer, self.innermost, self.outermost = layer, innermost or layer, outermost or innermost or layer

    @property
    def layers(self):
        return self.layer, self.innermost, self.outermost

    def __str__(self):
        return f"{self.x:g},{self.y:g}"


def qualified(layer, reference):
    return f"{reference}|{layer}" if layer != "0" else layer


def layers_at(shown, references):
    """The three layers of an entity that is seen. In an external reference the object's own layer stands for the innermost one."""
    around = shown.containers
    own = shown.layer
    if not around:
        return own, own, own
    innermost = around[0][1]
    reference = next((name for name, _ in around if name in references), None)
    if reference:
        own = qualified(own, reference)
        innermost = own if reference == around[0][0] else qualified(innermost, reference)
    return own, innermost, around[-1][1]


def hidden(file, shown):
    """Off or frozen by its own layer or, for frozen ones, by those of the references around it."""
    layers = {name.upper(): record for name, record in file.table("LAYER").items()}
    frozen = lambda name: int(first(layers.get(name.upper(), [(70, "0")]), 70)) & 1
    own = layers.get(shown.layer.upper(), [(62, "7")])
    return frozen(shown.layer) or int(first(own, 62, "7")) < 0 or any(frozen(layer) for _, layer in shown.containers)


def pick_faults(scene, picks, clearance, space="*Model_Space"):
    """What a pick does not find, or finds nearer than the clearance to something else."""
    everything = [shown for shown in scene.shown(space) if not hidden(scene.file, shown)]
    for name, pick in picks.items():
        near = sorted(((shown.distance(pick.x, pick.y), i) for i, shown in enumerate(everything)), key=lambda row: row[0])
        hit = everything[near[0][1]]
        found = layers_at(hit, scene.references)
        if near[0][0] > NEAR * clearance or found != pick.layers:
            yield f"pick {name} at {pick}: {found} {near[0][0]:.2f} away, not {pick.layers}"
        elif near[1][0] < clearance:
            other = everything[near[1][1]]
            yield f"pick {name} at {pick}: {other.record[0][1]} on {other.layer} is {near[1][0]:.2f} away"
