"""Copies the sample venue, with names from many scripts in the places of its own.

  renamed.py FROM TO
"""
import itertools
import json
import pathlib
import shutil
import sys

NAMES = [
    "Café Crème", "Cafe\u0301 Noe\u0308l", "Straßenbäckerei", "Łódź Ğarden", "İstanbul Işık",
    "Ærø Ost & Øl", "Smørrebrød №5", "ﬁne ﬂowers", "Ångström Åre", "Dvořák Žižkov",
    "Đồng Xuân Phở", "Καφές Ωδή", "ΚΑΦΈΣ ΟΔΌΣ", "Аптека Ёлка", "Київ Їжа", "Ђорђе Љубав",
    "Հայկական Հաց", "ქართული პური", "בית קפה", "قهوة البيت", "چای خانه", "हिन्दी चाय", "বই ঘর",
    "தேநீர் கடை", "ร้านหนังสือ", "ຮ້ານອາຫານ", "카페 서울", "카페", "東京ガラス", "ｶﾞﾗｽ ｺｰﾋｰ",
    "がらす屋", "カ\u3099ラス", "北京茶馆", "臺灣書店", "Ｗｉｄｅ　Ｓｈｏｐ", "🚇 Metro 🍜", "O’Neill’s",
    "3rd Floor – 24/7", "A\u00adB Soft", "x\u200by Zero", "ÀÉÎÕÜ", "àéîõü", "ꭰꮣꮄ", "𝔉𝔯𝔞𝔨𝔱𝔲𝔯",
    "ǅungla Ǉ", "ΐΰ", "ŉ ſtreet", "Ⅷ Ⓐ ㍿", "½ Price", "K\u212a Å\u212b",
]


def main(source, target):
    shutil.copytree(source, target)
    names = itertools.cycle(NAMES)
    for file in pathlib.Path(target).glob("venue/*/full.json"):
        venue = json.loads(file.read_text(encoding="utf-8"))
        for kind in ("destinations", "amenities"):
            for item in venue[kind]["items"]:
                item["name"] = next(names)
        file.write_text(json.dumps(venue, ensure_ascii=False), encoding="utf-8")


main(*sys.argv[1:])
