"""The archives that extraction is measured on: made once, the same bytes on every machine."""
import pathlib
import random
import zipfile

KB, MB = 1 << 10, 1 << 20
DATE = (2024, 3, 5, 14, 6, 8)


class Content:
    """Bytes that deflate to about half, as programs and their data do: text pieces between random ones."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        words = ["".join(self.random.choices("etaoinshrdlucmfw", k=self.random.randint(2, 9))) for _ in range(3000)]
        self.text = " ".join(self.random.choices(words, k=400_000)).encode()

    def take(self, size):
        parts = []
        while size > 0:
            text = min(size, self.random.randint(1, 48) * KB)
            start = self.random.randrange(len(self.text) - text)
            parts.append(self.text[start:start + text])
            noise = min(size - text, text // 3)
            parts.append(self.random.randbytes(noise))
            size -= text + noise
        return b"".join(parts)


def product(content):
    """44 files, 25 MB: programs of some megabytes, pictures and languages of some kilobytes."""
    yield from ((f"module{i}.dll", content.take(3 * MB + i * 100 * KB)) for i in range(6))
    yield from ((f"plugins/plugin{i:02}.dll", content.take(400 * KB)) for i in range(12))
    yield from ((f"lang/{i:02}/strings.ini", content.take(24 * KB)) for i in range(14))
    yield from ((f"config/page{i}.xml", content.take(7 * KB + i)) for i in range(12))


def small(content):
    """20,000 files, 84 MB, in 200 folders."""
    yield from ((f"folder{i // 1000:02}/part{i // 100:03}/file{i:05}.dat", content.take(content.random.randint(200, 8200)))
                for i in range(20_000))


def large(content):
    """Four files of 200 MB."""
    yield from ((f"disc{i}.img", content.take(200 * MB)) for i in range(4))


CORPORA = {"25 MB in 44 files": ("product", product), "84 MB in 20,000 files": ("small", small),
           "four of 200 MB": ("large", large)}


def write(path, entries, method=zipfile.ZIP_DEFLATED):
    unfinished = path.with_suffix(".part")
    with zipfile.ZipFile(unfinished, "w", method, compresslevel=6) as archive:
        for name, data in entries:
            info = zipfile.ZipInfo(name, DATE)
            info.compress_type = method
            info.create_system = 0
            info.external_attr = 0x20
            archive.writestr(info, data)
    unfinished.rename(path)


def make_all(folder, wanted):
    """The wanted archives of CORPORA as {title: path}; those that are there already are taken as they are."""
    folder.mkdir(parents=True, exist_ok=True)
    paths = {}
    for seed, (title, (name, entries)) in enumerate(CORPORA.items()):
        if name not in wanted:
            continue
        path = paths[title] = folder / f"{name}.zip"
        if not path.exists():
            print(f"bench: making the archive of {title} …", flush=True)
            write(path, entries(Content(seed)))
    return paths


def make_listing(folder, count):
    """An archive of `count` tiny stored entries."""
    path = pathlib.Path(folder) / f"listing-{count}.zip"
    if not path.exists():
        write(path, ((f"resources/themes/default/folder{i % 37}/picture{i}.svg", b"x") for i in range(count)),
              zipfile.ZIP_STORED)
    return path


TAGS = ["VBox", "HBox", "TabBox", "Control", "Label", "Button", "CheckBox", "Progress"]
BOXES = TAGS[:3]
ATTRIBUTES = {
    "name": "lb_title{}", "width": "{}", "height": "{}", "margin": "{},4,0,8", "font": "system_12", "theme": "btn_green",
    "normaltextcolor": "darkcolor{}", "bkimage": "file='../public/icon/logo.svg' color='svg_{}' dest='0,0,16,16'",
    "textid": "STRID_PICTOR_USEAGREE", "halign": "center", "bkcolor": "back_{}", "visible": "0", "textpadding": "0,0,{},0",
}


def make_layout(folder, size):
    """A layout of about `size` bytes, in the manner of a skin's."""
    path = pathlib.Path(folder) / f"layout-{size}.xml"
    if path.exists():
        return path
    rolls = random.Random(size)
    parts = ['<?xml version="1.0" encoding="utf-8"?>\n<Window size="600,400" caption="0,0,0,280">\n']
    written, stack = len(parts[0]), ["Window"]
    while written < size or len(stack) > 1:
        if len(stack) > 1 and (written >= size or rolls.random() < 0.32 or len(stack) > 8):
            tag = stack.pop()
            line = f"{'  ' * len(stack)}</{tag}>\n"
        else:
            tag = rolls.choice(TAGS)
            chosen = rolls.sample(list(ATTRIBUTES), rolls.randint(1, 7))
            values = "".join(f' {name}="{ATTRIBUTES[name].format(rolls.randint(0, 99))}"' for name in chosen)
            line = f"{'  ' * len(stack)}<{tag}{values}{'>' if tag in BOXES else '/>'}\n"
            stack += [tag] if tag in BOXES else []
        parts.append(line)
        written += len(line)
    unfinished = path.with_suffix(".part")
    unfinished.write_text("".join(parts) + "</Window>\n")
    unfinished.rename(path)
    return path
