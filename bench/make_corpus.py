#!/usr/bin/env python3
"""Generates the applications that the benchmarks scan. The same options and seed give the same bytes.

  make_corpus.py entries DIR -n 1000   DIR/applications/*.desktop, with --icons also DIR/icons/hicolor
  make_corpus.py bundles DIR -n 1000   DIR/NAME.app/Contents/Info.plist

Entries are about 7.8 kB on average: some hardly translated, some with a hundred locales for each of the four keys
that get translated, written as desktop projects write them (all locales of a key together). Every entry is shown.
Bundles have an XML information list, with --binary a binary one.
"""
import argparse
import os
import plistlib
import random
import struct
import zlib

# What a translated entry is filled with, in this order, until it has reached its size.
LOCALES = """de fr es it ru pl nl pt_BR zh_CN ja sv cs da uk tr hu fi ca nb pt el sk sl zh_TW ko ro bg et lt lv gl eu
id he ar hr sr vi th fa is ms ga kk nn sr@latin en_GB be ca@valencia bs mk sq ka ta te hi mr bn gu pa ml kn ne si my
km lo mn kk_KZ uz ky tg tt ug af zu xh sw am hy az oc br cy gd fy lb fo mt wa ast an sc fur lij vec nds hsb eo ia io
ku ckb ps ur dz yi jv""".split()
CYRILLIC = set("ru uk bg be sr mk kk mn ky tg tt kk_KZ".split())
WIDE = set("zh_CN zh_TW ja ko".split())
INDIC = set("ta te hi mr bn gu pa ml kn ne si my km lo th am dz".split())
FIRST = """Acorn Basalt Cobalt Dune Estuary Fern Glacier Heron Inlet Jade Kelp Lagoon Marble Nectar Opal Plume Quill
Reef Saffron Thistle Umber Vale Wren Yarrow Zinc""".split()
SECOND = """Draft Frame Track Volume Port Ledger Puzzle Clock Letter Atlas Chart Loom Relay Sketch Archive Signal
Beacon Tape Lens Queue""".split()
KINDS = [  # noun, main and additional category, category type of a bundle
    ("Editor", "Utility;TextEditor", "productivity"),
    ("Viewer", "Graphics;Viewer", "photography"),
    ("Player", "AudioVideo;Audio;Player", "music"),
    ("Browser", "Network;WebBrowser", "social-networking"),
    ("Game", "Game;LogicGame", "games"),
    ("Builder", "Development;IDE", "developer-tools"),
    ("Monitor", "System;Monitor", "utilities"),
    ("Settings", "Settings;DesktopSettings", "utilities"),
    ("Writer", "Office;WordProcessor", "business"),
    ("Tutor", "Education;Languages", "education"),
]
TEXT_TYPES = ["text/plain", "text/html", "image/png", "image/svg+xml", "audio/ogg", "video/webm", "application/zip"]


def word(locale, noun):
    """A word of about the length and the script of `noun` in the locale."""
    if locale in CYRILLIC:
        return "Приложение" + noun[:2]
    if locale in WIDE:
        return "应用程序" + noun[:1]
    if locale in INDIC:
        return "अनुप्रयोग" + noun[:1]
    return noun + locale.split("_")[0]


def entry_size(rng):
    """Few small entries, many middling ones, a tail of large ones."""
    share = rng.random()
    if share < 0.25:
        return rng.randint(700, 2500)
    if share < 0.75:
        return rng.randint(2500, 11500)
    return rng.randint(11500, 16500)


def desktop_entry(number, rng):
    noun, categories, _ = rng.choice(KINDS)
    subject = rng.choice(SECOND)
    name = f"{rng.choice(FIRST)} {subject} {noun if rng.random() < 0.6 else number}"
    slug = f"app{number:05d}-{name.lower().replace(' ', '-')}"
    plain = {
        "Name": name,
        "GenericName": f"{subject} {noun}",
        "Comment": f"View, change and keep {subject.lower()} documents with {name}",
        "Keywords": f"{noun.lower()};{subject.lower()};open;edit;",
    }
    rest = [f"Exec={slug} --new-window %U", f"Icon={slug}", "Terminal=false", "StartupNotify=true",
            f"StartupWMClass={slug}", f"Categories={categories};"]
    if rng.random() < 0.3:
        rest.append("MimeType=" + ";".join(rng.sample(TEXT_TYPES, rng.randint(1, 5))) + ";")
    if rng.random() < 0.1:
        rest += ["Actions=new;", "", "[Desktop Action new]", "Name=New Window", f"Exec={slug} --new-window"]
    size = entry_size(rng)
    translated = {key: [] for key in plain}
    used = sum(len(line) + 1 for line in rest) + sum(len(k) + len(v) + 2 for k, v in plain.items())
    for locale in LOCALES:
        if used >= size:
            break
        local = word(locale, noun)
        for key, value in (("Name", f"{name.split()[0]} {local}"), ("GenericName", f"{local} {subject}"),
                           ("Comment", f"{local} {local} {subject} {local} {name}"), ("Keywords", f"{local};{subject};")):
            line = f"{key}[{locale}]={value}"
            translated[key].append(line)
            used += len(line.encode()) + 1
    lines = ["[Desktop Entry]", "Type=Application"]
    for key, value in plain.items():
        lines += [f"{key}={value}"] + translated[key]
    return slug, "\n".join(lines + rest) + "\n"


def picture(size, rng):
    """A PNG of a colourful disc with a gradient and some noise, which decodes about like an icon."""
    rows = []
    tops = rng.sample([rng.randint(0, 60), rng.randint(0, 200), rng.randint(140, 200)], 3)
    noise = rng.randbytes(size)
    for y in range(size):
        half = int(max(0.0, (size / 2) ** 2 - (y + 0.5 - size / 2) ** 2) ** 0.5)
        colours = [top + y * 50 // size for top in tops]
        disc = b"".join(bytes([*(colour + noise[(x * y) % size] % 4 for colour in colours), 255]) for x in range(2 * half))
        rows.append(b"\0" + bytes(4 * (size // 2 - half)) + disc + bytes(4 * (size - size // 2 - half)))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"".join(rows), 6)) + chunk(b"IEND", b""))


def write(path, data):
    with open(path, "wb") as file:
        file.write(data)
    return len(data)


def make_icons(folder, slugs, rng):
    """One file of 256 pixels for each; a few pictures are all there are."""
    theme = os.path.join(folder, "icons", "hicolor")
    place = os.path.join(theme, "256x256", "apps")
    os.makedirs(place)
    write(os.path.join(theme, "index.theme"),
          b"[Icon Theme]\nName=Hicolor\nDirectories=256x256/apps\n\n[256x256/apps]\nSize=256\nContext=Applications\n")
    pictures = [picture(256, rng) for _ in range(16)]
    for number, slug in enumerate(slugs):
        write(os.path.join(place, slug + ".png"), pictures[number % len(pictures)])


def make_entries(folder, count, rng, icons):
    applications = os.path.join(folder, "applications")
    os.makedirs(applications)
    total = 0
    slugs = []
    for number in range(count):
        slug, text = desktop_entry(number, rng)
        slugs.append(slug)
        total += write(os.path.join(applications, slug + ".desktop"), text.encode())
    if icons:
        make_icons(folder, slugs, rng)
    return total


def make_bundles(folder, count, rng, form):
    total = 0
    for number in range(count):
        noun, _, category = rng.choice(KINDS)
        name = f"{rng.choice(FIRST)} {rng.choice(SECOND)} {noun} {number}"
        contents = os.path.join(folder, name + ".app", "Contents")
        os.makedirs(os.path.join(contents, "MacOS"))
        information = {
            "CFBundleName": name, "CFBundleDisplayName": name, "CFBundleExecutable": name.replace(" ", ""),
            "CFBundleIdentifier": f"org.example.app{number}", "CFBundleIconFile": "AppIcon", "CFBundlePackageType": "APPL",
            "CFBundleShortVersionString": f"{rng.randint(1, 9)}.{rng.randint(0, 30)}", "CFBundleVersion": str(number),
            "CFBundleInfoDictionaryVersion": "6.0", "CFBundleSupportedPlatforms": ["MacOSX"],
            "CFBundleLocalizations": LOCALES[:rng.randint(1, 40)], "LSMinimumSystemVersion": "12.0",
            "LSApplicationCategoryType": "public.app-category." + category, "NSHighResolutionCapable": True,
            "NSPrincipalClass": "NSApplication",
        }
        if rng.random() < 0.5:
            information["CFBundleDocumentTypes"] = [
                {"CFBundleTypeName": kind, "CFBundleTypeRole": "Editor", "LSHandlerRank": "Alternate",
                 "LSItemContentTypes": ["public." + kind.split("/")[1]]}
                for kind in rng.sample(TEXT_TYPES, rng.randint(1, len(TEXT_TYPES)))]
        total += write(os.path.join(contents, "Info.plist"), plistlib.dumps(information, fmt=form))
    return total


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("what", choices=["entries", "bundles"])
    parser.add_argument("folder", help="must not exist")
    parser.add_argument("-n", type=int, default=1000, help="how many")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--binary", action="store_true")
    parser.add_argument("--icons", action="store_true")
    options = parser.parse_args()
    os.makedirs(options.folder)
    rng = random.Random(options.seed)
    if options.what == "entries":
        total = make_entries(options.folder, options.n, rng, options.icons)
    else:
        form = plistlib.FMT_BINARY if options.binary else plistlib.FMT_XML
        total = make_bundles(options.folder, options.n, rng, form)
    print(f"{options.n} {options.what}, {total / max(1, options.n):.0f} bytes each")


if __name__ == "__main__":
    main()
