#!/usr/bin/env python3
"""Reckons the texts of the golden tables without ICU, and compares.

    judge.py [FOLDER]    one line for each text that differs; fails if there is one; 77 where Python knows no zones

Zones come from Python's own tables, Gregorian days and weeks from its datetime, other calendars from the arithmetic below. Names and
patterns were written down by hand. Tables of locales that have no entry here are not judged, and named at the end.
"""

import datetime
import pathlib
import sys
import zoneinfo

# The order of the columns after the zone and the moment. {Y} is the year of the week.
SPOTIFY = "{MMM} {d}, {yyyy}, {hh}:{mm} {a}"
NARROW = "\u202f"
ENGLISH_MONTHS = "January February March April May June July August September October November December".split()
ENGLISH_DAYS = "Monday Tuesday Wednesday Thursday Friday Saturday Sunday".split()

# (first day of the week, Monday is 0; fewest days that the first week has in the new year)
ISO_WEEKS = (0, 4)
SUNDAY_WEEKS = (6, 1)


class Customs:
    def __init__(self, patterns, months, short_months, days, short_days, halves, weeks, calendar="gregorian", digits="0123456789"):
        self.patterns, self.weeks, self.calendar, self.digits = patterns, weeks, calendar, digits
        self.months, self.short_months, self.days, self.short_days, self.halves = months, short_months, days, short_days, halves


def customs():
    numbered = [f"{number}月" for number in range(1, 13)]
    korean = [f"{number}월" for number in range(1, 13)]
    japanese_days = [name + "曜日" for name in "月火水木金土日"]
    result = {
        "en_US": Customs(
            ["{MMMM} {d}, {y}", "{EEE}, {MMM} {d}", "{EEE}, {MMM} {d}, {Y}", "{EEEE}", "{MMM} {d}, {y}, {h}:{mm}" + NARROW + "{a}",
             "{M}/{d}/{yy}", "{h}:{mm}" + NARROW + "{a}", "{MMMM} {d}"],
            ENGLISH_MONTHS, [name[:3] for name in ENGLISH_MONTHS], ENGLISH_DAYS, [name[:3] for name in ENGLISH_DAYS],
            ("AM", "PM"), SUNDAY_WEEKS),
        "en_GB": Customs(
            ["{d} {MMMM} {y}", "{EEE}, {d} {MMM}", "{EEE}, {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y}, {h}:{mm}" + NARROW + "{a}",
             "{dd}/{MM}/{y}", "{HH}:{mm}", "{d} {MMMM}"],
            ENGLISH_MONTHS, [name[:4 if name == "September" else 3] for name in ENGLISH_MONTHS], ENGLISH_DAYS,
            [name[:3] for name in ENGLISH_DAYS], ("am", "pm"), ISO_WEEKS),
        "de_DE": Customs(
            ["{d}. {MMMM} {y}", "{EEE}, {d}. {MMM}", "{EEE}, {d}. {MMM} {Y}", "{EEEE}", "{d}. {MMM} {y}, {h}:{mm}" + NARROW + "{a}",
             "{dd}.{MM}.{yy}", "{HH}:{mm}", "{d}. {MMMM}"],
            "Januar Februar März April Mai Juni Juli August September Oktober November Dezember".split(),
            "Jan. Feb. März Apr. Mai Juni Juli Aug. Sept. Okt. Nov. Dez.".split(),
            "Montag Dienstag Mittwoch Donnerstag Freitag Samstag Sonntag".split(), "Mo. Di. Mi. Do. Fr. Sa. So.".split(),
            ("AM", "PM"), ISO_WEEKS),
        "fr_FR": Customs(
            ["{d} {MMMM} {y}", "{EEE} {d} {MMM}", "{EEE} {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y}, {h}:{mm}" + NARROW + "{a}",
             "{dd}/{MM}/{y}", "{HH}:{mm}", "{d} {MMMM}"],
            "janvier février mars avril mai juin juillet août septembre octobre novembre décembre".split(),
            "janv. févr. mars avr. mai juin juil. août sept. oct. nov. déc.".split(),
            "lundi mardi mercredi jeudi vendredi samedi dimanche".split(), "lun. mar. mer. jeu. ven. sam. dim.".split(),
            ("AM", "PM"), ISO_WEEKS),
        "pt_BR": Customs(
            ["{d} de {MMMM} de {y}", "{EEE}, {d} de {MMM}", "{EEE}, {d} de {MMM} de {Y}", "{EEEE}",
             "{d} de {MMM} de {y}, {h}:{mm}" + NARROW + "{a}", "{dd}/{MM}/{y}", "{HH}:{mm}", "{d} de {MMMM}"],
            "janeiro fevereiro março abril maio junho julho agosto setembro outubro novembro dezembro".split(),
            "jan. fev. mar. abr. mai. jun. jul. ago. set. out. nov. dez.".split(),
            "segunda-feira terça-feira quarta-feira quinta-feira sexta-feira sábado domingo".split(),
            "seg. ter. qua. qui. sex. sáb. dom.".split(), ("AM", "PM"), SUNDAY_WEEKS),
        "id_ID": Customs(
            ["{d} {MMMM} {y}", "{EEE}, {d} {MMM}", "{EEE}, {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y}, {h}.{mm}" + NARROW + "{a}",
             "{dd}/{MM}/{yy}", "{HH}.{mm}", "{d} {MMMM}"],
            "Januari Februari Maret April Mei Juni Juli Agustus September Oktober November Desember".split(),
            "Jan Feb Mar Apr Mei Jun Jul Agu Sep Okt Nov Des".split(),
            "Senin Selasa Rabu Kamis Jumat Sabtu Minggu".split(), "Sen Sel Rab Kam Jum Sab Min".split(), ("AM", "PM"), SUNDAY_WEEKS),
        "ja_JP": Customs(
            ["{y}年{M}月{d}日", "{M}月{d}日({EEE})", "{Y}年{M}月{d}日({EEE})", "{EEEE}", "{y}年{M}月{d}日 {a}{K}:{mm}", "{y}/{MM}/{dd}",
             "{H}:{mm}", "{M}月{d}日"],
            numbered, numbered, japanese_days, list("月火水木金土日"), ("午前", "午後"), SUNDAY_WEEKS),
        "ja_JP@calendar=japanese": Customs(
            ["{G}{y}年{M}月{d}日", "{M}月{d}日({EEE})", "{G}{Y}年{M}月{d}日({EEE})", "{EEEE}", "{G}{y}年{M}月{d}日 {a}{K}:{mm}",
             "{GGGGG}{yNumber}/{M}/{d}", "{H}:{mm}", "{M}月{d}日"],
            numbered, numbered, japanese_days, list("月火水木金土日"), ("午前", "午後"), SUNDAY_WEEKS, "japanese"),
        "ko_KR": Customs(
            ["{y}년 {M}월 {d}일", "{MMM} {d}일 ({EEE})", "{Y}년 {MMM} {d}일 ({EEE})", "{EEEE}", "{y}년 {MMM} {d}일 {a} {h}:{mm}",
             "{yy}. {M}. {d}.", "{a} {h}:{mm}", "{MMMM} {d}일"],
            korean, korean, [name + "요일" for name in "월화수목금토일"], list("월화수목금토일"), ("오전", "오후"), SUNDAY_WEEKS),
        "zh_Hans_CN": Customs(
            ["{y}年{M}月{d}日", "{M}月{d}日{EEE}", "{Y}年{M}月{d}日{EEE}", "{EEEE}", "{y}年{M}月{d}日 {a}{h}:{mm}", "{y}/{M}/{d}",
             "{HH}:{mm}", "{M}月{d}日"],
            numbered, numbered, ["星期" + name for name in "一二三四五六日"], ["周" + name for name in "一二三四五六日"],
            ("上午", "下午"), (0, 1)),
        "th_TH": Customs(
            ["{d} {MMMM} {y}", "{EEE} {d} {MMM}", "{EEE} {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y} {h}:{mm} {a}", "{d}/{M}/{yy}",
             "{HH}:{mm}", "{d} {MMMM}"],
            "มกราคม กุมภาพันธ์ มีนาคม เมษายน พฤษภาคม มิถุนายน กรกฎาคม สิงหาคม กันยายน ตุลาคม พฤศจิกายน ธันวาคม".split(),
            "ม.ค. ก.พ. มี.ค. เม.ย. พ.ค. มิ.ย. ก.ค. ส.ค. ก.ย. ต.ค. พ.ย. ธ.ค.".split(),
            ["วัน" + name for name in "จันทร์ อังคาร พุธ พฤหัสบดี ศุกร์ เสาร์ อาทิตย์".split()], "จ. อ. พ. พฤ. ศ. ส. อา.".split(),
            ("ก่อนเที่ยง", "หลังเที่ยง"), SUNDAY_WEEKS, "buddhist"),
        "ar_EG": Customs(
            ["{d} {MMMM} {y}", "{EEE}، {d} {MMM}", "{EEE}، {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y}، {h}:{mm} {a}",
             "{d}\u200f/{M}\u200f/{y}", "{h}:{mm} {a}", "{d} {MMMM}"],
            "يناير فبراير مارس أبريل مايو يونيو يوليو أغسطس سبتمبر أكتوبر نوفمبر ديسمبر".split(),
            "يناير فبراير مارس أبريل مايو يونيو يوليو أغسطس سبتمبر أكتوبر نوفمبر ديسمبر".split(),
            "الاثنين الثلاثاء الأربعاء الخميس الجمعة السبت الأحد".split(), "الاثنين الثلاثاء الأربعاء الخميس الجمعة السبت الأحد".split(),
            ("ص", "م"), (5, 1), digits="٠١٢٣٤٥٦٧٨٩"),
        "fa_IR": Customs(
            ["{d} {MMMM} {y}", "{EEE} {d} {MMM}", "{EEE} {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y}، {h}:{mm} {a}", "{y}/{M}/{d}",
             "{H}:{mm}", "{d} {MMMM}"],
            "فروردین اردیبهشت خرداد تیر مرداد شهریور مهر آبان آذر دی بهمن اسفند".split(),
            "فروردین اردیبهشت خرداد تیر مرداد شهریور مهر آبان آذر دی بهمن اسفند".split(),
            "دوشنبه سه\u200cشنبه چهارشنبه پنجشنبه جمعه شنبه یکشنبه".split(), "دوشنبه سه\u200cشنبه چهارشنبه پنجشنبه جمعه شنبه یکشنبه".split(),
            ("قبل\u200cازظهر", "بعدازظهر"), (5, 1), "persian", "۰۱۲۳۴۵۶۷۸۹"),
        "hi_IN@numbers=deva": Customs(
            ["{d} {MMMM} {y}", "{EEE}, {d} {MMM}", "{EEE}, {d} {MMM} {Y}", "{EEEE}", "{d} {MMM} {y}, {h}:{mm} {a}", "{d}/{M}/{yy}",
             "{h}:{mm} {a}", "{d} {MMMM}"],
            "जनवरी फ़रवरी मार्च अप्रैल मई जून जुलाई अगस्त सितंबर अक्तूबर नवंबर दिसंबर".split(),
            "जन॰ फ़र॰ मार्च अप्रैल मई जून जुल॰ अग॰ सित॰ अक्तू॰ नव॰ दिस॰".split(),
            [name + "वार" for name in "सोम मंगल बुध गुरु शुक्र शनि रवि".split()], "सोम मंगल बुध गुरु शुक्र शनि रवि".split(),
            ("am", "pm"), SUNDAY_WEEKS, digits="०१२३४५६७८९"),
        "mr_IN": Customs(
            ["{d} {MMMM}, {y}", "{EEE}, {d} {MMM}", "{EEE}, {d}, {MMM} {Y}", "{EEEE}", "{d} {MMM}, {y}, {h}:{mm} {a}", "{d}/{M}/{yy}",
             "{h}:{mm} {a}", "{d} {MMMM}"],
            "जानेवारी फेब्रुवारी मार्च एप्रिल मे जून जुलै ऑगस्ट सप्टेंबर ऑक्टोबर नोव्हेंबर डिसेंबर".split(),
            "जाने फेब्रु मार्च एप्रि मे जून जुलै ऑग सप्टें ऑक्टो नोव्हें डिसें".split(),
            [name + "वार" for name in "सोम मंगळ बुध गुरु शुक्र शनि रवि".split()], "सोम मंगळ बुध गुरु शुक्र शनि रवि".split(),
            ("AM", "PM"), SUNDAY_WEEKS, digits="०१२३४५६७८९"),
    }
    return result


def week_year(day, weeks, first_of):
    """The year that the week of a day belongs to; `first_of(year)` is the first day of a year, `day` a pair of a day and its year."""
    date, year = day
    first_weekday, fewest = weeks
    start = date - datetime.timedelta(days=(date.weekday() - first_weekday) % 7)
    for candidate in (year + 1, year):
        new_year = first_of(candidate)
        first_week = new_year - datetime.timedelta(days=(new_year.weekday() - first_weekday) % 7)
        if 7 - (new_year - first_week).days < fewest:
            first_week += datetime.timedelta(days=7)
        if start >= first_week:
            return candidate
    return year - 1


def persian_new_year(year):
    """1 Farvardin. Leap years follow a cycle of 33 years, which holds from 1343 to 1472."""
    leaps = sum(1 for before in range(1348, year) if before % 33 in (1, 5, 9, 13, 17, 22, 26, 30))
    return datetime.date(1969, 3, 21) + datetime.timedelta(days=365 * (year - 1348) + leaps)


def persian(date):
    year = date.year - 621
    if date < persian_new_year(year):
        year -= 1
    days = (date - persian_new_year(year)).days
    month, day = (days // 31, days % 31) if days < 186 else (6 + (days - 186) // 30, (days - 186) % 30)
    return year, month + 1, day + 1


ERAS = [(datetime.date(2019, 5, 1), "令和", "R"), (datetime.date(1989, 1, 8), "平成", "H"), (datetime.date(1926, 12, 25), "昭和", "S")]


def gregorian_new_year(year):
    return datetime.date(year, 1, 1)


def fields_of(wall, its):
    date = wall.date()
    year, month, day = date.year, date.month, date.day
    fields = {}
    week = week_year((date, year), its.weeks, gregorian_new_year)
    plain_year = None
    if its.calendar == "persian":
        year, month, day = persian(date)
        week = week_year((date, year), its.weeks, persian_new_year)
    elif its.calendar == "buddhist":
        year += 543
    elif its.calendar == "japanese":
        start, name, letter = next(era for era in ERAS if date >= era[0])
        year -= start.year - 1
        fields |= {"G": name, "GGGGG": letter, "yNumber": str(year)}
        plain_year = "元" if year == 1 else None
    fields |= {
        "y": plain_year or str(year), "yy": f"{year % 100:02}", "yyyy": f"{year:04}", "Y": str(week), "M": str(month), "MM": f"{month:02}",
        "MMM": its.short_months[month - 1], "MMMM": its.months[month - 1], "d": str(day), "dd": f"{day:02}",
        "EEE": its.short_days[date.weekday()], "EEEE": its.days[date.weekday()], "H": str(wall.hour), "HH": f"{wall.hour:02}",
        "h": str((wall.hour + 11) % 12 + 1), "hh": f"{(wall.hour + 11) % 12 + 1:02}", "K": str(wall.hour % 12), "mm": f"{wall.minute:02}",
        "a": its.halves[wall.hour // 12]}
    return fields


def expected_row(locale, its, zone, moment):
    utc = datetime.datetime.strptime(moment, "%Y-%m-%dT%H:%M:%S.%fZ").replace(tzinfo=datetime.timezone.utc)
    fields = fields_of(utc.astimezone(zoneinfo.ZoneInfo(zone)), its)
    digits = str.maketrans("0123456789", its.digits)
    return [moment] + [pattern.format(**fields).translate(digits) for pattern in [SPOTIFY] + its.patterns]


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
    known, judged, wrong, unjudged = customs(), 0, 0, []
    if "Europe/Berlin" not in zoneinfo.available_timezones():
        print("Python has no tables of zones here.")
        return 77
    for path in sorted(folder.glob("*.txt")):
        locale, heading, *rows = path.read_text(encoding="utf-8").splitlines()
        locale, names = locale[2:], heading.split("\t")[2:]
        if locale not in known:
            unjudged.append(path.name)
            continue
        for row in rows:
            zone, moment, *texts = row.split("\t")
            for name, text, expected in zip(names, texts, expected_row(locale, known[locale], zone, moment), strict=True):
                text = text.replace("\\u{202F}", NARROW).replace("\\u{200F}", "\u200f").replace("\\u{200C}", "\u200c")
                judged += 1
                if text != expected:
                    wrong += 1
                    print(f"{path.name}: {zone} {moment} {name}: the table says {text!r}, the judge {expected!r}")
    print(f"{judged} texts judged, {wrong} differ. Not judged: {', '.join(unjudged) or 'none'}.")
    return 1 if wrong or not judged else 0


if __name__ == "__main__":
    sys.exit(main())
