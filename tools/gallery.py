#!/usr/bin/env python3
"""Draws every window, page and state of the skin at four scales: build/gallery/index.html, one contact sheet a scale,
and contact.png, all of them.

    gallery.py --vantakit build/host/vantakit --out build/gallery [--skin DIR]
"""
import argparse
import concurrent.futures
import html
import os
import pathlib
import subprocess
import sys

SCALES = (100, 125, 150, 200)
FOLDER = r"lb_folder.text=C:\Program Files (x86)\VantaPictor"
SETUP = "SetupWnd.xml"
MESSAGE = ["okbtn.text=我知道了", "lb_text.text=无权限写文件到安装目录"]

# name, layout, page, states, attributes and, where it matters, further options of the preview
SCENES = [
    ("install", SETUP, "vb_inst", [], [FOLDER]),
    ("install-agreed", SETUP, "vb_inst", ["cb_agree=selected"], [FOLDER]),
    ("install-hover", SETUP, "vb_inst",
     ["btn_inst=hot", "cb_agree=hot", "cb_default=hot", "btn_use_agreement=hot", "btn_browse=hot", "__min=hot"], [FOLDER]),
    ("install-pressed", SETUP, "vb_inst",
     ["btn_inst=pushed", "cb_agree=pushed", "cb_default=pushed", "btn_privacy=pushed", "btn_browse=pushed",
      "__close=pushed"], [FOLDER]),
    ("install-disabled", SETUP, "vb_inst",
     ["btn_inst=disabled", "cb_agree=disabled", "cb_default=disabled", "btn_privacy=disabled", "__close=disabled"], [FOLDER]),
    ("install-focus", SETUP, "vb_inst", ["cb_agree=focused"], [FOLDER]),
    ("install-tip", SETUP, "vb_inst", ["lb_tips=shown"], [FOLDER, "lb_tips.text=请阅读并同意协议"]),
    ("install-long-folder", SETUP, "vb_inst", [],
     [r"lb_folder.text=D:\Ein sehr langer Ordnername\der nicht in die Zeile passt\und darum gekürzt wird\VantaPictor"]),
    ("refused", SETUP, "vb_noinst", ["lb_tips=shown", "__close=hot"],
     ["lb_tips.text=您正在安装的版本比已安装的版本低，不能继续安装"]),
    ("installing-0", SETUP, "vb_insting", ["__close=disabled"], ["pg_insting.value=0", "lb_insting.text=正在为您安装  0%"]),
    ("installing-42", SETUP, "vb_insting", ["__close=disabled"], ["pg_insting.value=42", "lb_insting.text=正在为您安装  42%"]),
    ("installing-100", SETUP, "vb_insting", [], ["pg_insting.value=100", "lb_insting.text=正在为您安装  100%"]),
    ("uninstall", SETUP, "vb_uninst", [], []),
    ("uninstalling", SETUP, "vb_uninsting", [], ["pg_uninsting.value=70", "lb_uninsting.text=正在为您卸载  70%"]),
    ("uninstalled", SETUP, "vb_uninstok", [], []),
    ("message", "MessageWnd.xml", "", [], MESSAGE),
    ("message-hover", "MessageWnd.xml", "", ["okbtn=hot", "__close=hot"], MESSAGE),
    ("message-long", "MessageWnd.xml", "", [],
     [MESSAGE[0], "lb_text.text=您正在安装的版本比已安装的版本低，不能继续安装，请先卸载已安装的版本"]),
    ("message-success", "MessageWnd.xml", "", [], [MESSAGE[0], "lb_text.text=安装完成", r"ct_icon.bkimage=.\success.svg"]),
    ("update", "UpdateWnd.xml", "", [], []),
    # What the older systems and a user who changes the scale of an open window get to see.
    ("install-xp", SETUP, "vb_inst", [], [FOLDER], ["--windows", "xp"]),
    ("install-vista", SETUP, "vb_inst", [], [FOLDER], ["--windows", "vista"]),
    ("install-7", SETUP, "vb_inst", [], [FOLDER], ["--windows", "7"]),
    ("message-xp", "MessageWnd.xml", "", [], MESSAGE, ["--windows", "xp"]),
    ("install-opened-at-125", SETUP, "vb_inst", ["lb_tips=shown"], [FOLDER, "lb_tips.text=请阅读并同意协议"],
     ["--opened-at", "125"]),
    ("installing-opened-at-200", SETUP, "vb_insting", ["__close=disabled"],
     ["pg_insting.value=42", "lb_insting.text=正在为您安装  42%"], ["--opened-at", "200"]),
    ("message-opened-at-150", "MessageWnd.xml", "", [], MESSAGE, ["--opened-at", "150"]),
]


def draw(arguments, scene, scale):
    name, layout, page, states, values, *more = scene
    target = arguments.out / str(scale) / f"{name}.png"
    target.parent.mkdir(parents=True, exist_ok=True)
    words = [arguments.vantakit, "preview", layout, "--scale", str(scale), "--out", target]
    words += ["--page", page] if page else []
    words += [word for state in states for word in ("--state", state)]
    words += [word for value in values for word in ("--set", value)]
    words += more[0] if more else []
    words += ["--skin", arguments.skin] if arguments.skin else []
    done = subprocess.run(words, capture_output=True, text=True)
    if done.returncode:
        return f"{name} at {scale}: {done.stderr.strip() or done.returncode}"
    return None


def write_page(out):
    rows = []
    for name, layout, page, states, values, *more in SCENES:
        told = html.escape(", ".join([layout, page, *states, *values, *(more[0] if more else [])]).replace(", ,", ","))
        pictures = "".join(f'<a href="{s}/{name}.png"><img src="{s}/{name}.png" alt="{name} {s}"></a>' for s in SCALES)
        rows.append(f"<h2 id={name}>{name}</h2><p>{told}</p><div>{pictures}</div>")
    links = " ".join(f'<a href="#{scene[0]}">{scene[0]}</a>' for scene in SCENES)
    (out / "index.html").write_text(f"""<!doctype html><meta charset=utf-8><title>The skin</title>
<style>
body {{ font: 14px system-ui, sans-serif; margin: 32px; background: #dfe5ec; color: #1b2430 }}
nav a {{ margin-right: 12px }} h2 {{ margin: 40px 0 0 }} p {{ color: #55606e; margin: 4px 0 12px }}
img {{ margin: 0 16px 16px 0; box-shadow: 0 6px 24px #0004; vertical-align: top }}
</style><h1>The skin at {", ".join(map(str, SCALES))} percent</h1><nav>{links}</nav>{"".join(rows)}
""", encoding="utf-8")


def write_sheets(out):
    for scale in SCALES:
        pictures = [out / str(scale) / f"{scene[0]}.png" for scene in SCENES]
        subprocess.run(["montage", *pictures, "-background", "#dfe5ec", "-geometry", "+16+16", "-tile", "4x",
                        out / f"sheet-{scale}.png"], check=True)
    subprocess.run(["montage", *[out / f"sheet-{scale}.png" for scale in SCALES], "-background", "#dfe5ec",
                    "-geometry", "1600x+8+8", "-tile", "2x", out / "contact.png"], check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--vantakit", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    parser.add_argument("--skin", type=pathlib.Path)
    arguments = parser.parse_args()
    work = [(scene, scale) for scale in SCALES for scene in SCENES]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        wrong = [text for text in pool.map(lambda item: draw(arguments, *item), work) if text]
    for text in wrong:
        print(text, file=sys.stderr)
    if wrong:
        return 1
    write_page(arguments.out)
    write_sheets(arguments.out)
    print(f"{len(work)} pictures: {arguments.out}/index.html, {arguments.out}/contact.png")
    return 0


if __name__ == "__main__":
    sys.exit(main())
