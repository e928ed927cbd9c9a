"""Settings of a Wine prefix as a registry file: prefix_settings.py fonts | dpi NUMBER"""
import sys

INSTALLED = "WenQuanYi Micro Hei"
FACES = ("Microsoft YaHei", "微软雅黑", "SimSun", "宋体", "Segoe UI", "Tahoma")


def fonts():
    lines = [f'"{face}"="{INSTALLED}"' for face in FACES]
    return [r"[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]", *lines]


def dpi(number):
    value = f'"LogPixels"=dword:{int(number):08x}'
    return [r"[HKEY_CURRENT_USER\Control Panel\Desktop]", value, "",
            r"[HKEY_LOCAL_MACHINE\System\CurrentControlSet\Hardware Profiles\Current\Software\Fonts]", value]


def main():
    lines = {"fonts": fonts, "dpi": dpi}[sys.argv[1]](*sys.argv[2:])
    text = "\r\n".join(["Windows Registry Editor Version 5.00", "", *lines, ""])
    sys.stdout.buffer.write(b"\xff\xfe" + text.encode("utf-16-le"))


if __name__ == "__main__":
    main()
