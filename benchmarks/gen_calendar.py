#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Delmast Time authors
# SPDX-License-Identifier: BSD-3-Clause
"""Deterministic synthetic organisation calendar.

Emits the SAME logical data as
  --xml FILE   the project's XML calendar file (true ISO-8859-15 bytes)
  --ics FILE   RFC 5545 iCalendar (UTF-8, CRLF, folded at 75 octets)
  --stats FILE JSON with what was generated

Python 3 standard library only.  Only random.Random(seed).random() is used, the one
method whose sequence the standard library promises to keep across versions, so a
(seed, count, today) triple always gives the same bytes.

  gen_calendar.py -n 10000 --seed 1 --xml org10k.xml --ics org10k.ics

Conventions:
  * notime=1 entries keep date-time values, 0:0 .. 23:59
  * reminderfired is 1 when the reminder moment lies before `today`
  * account type: 1 person, 2 resource; attendee (role): 0 attendee, 1 optional, 2 resource;
    status: 0 unanswered, 2 declined, 3 tentative, 4 accepted
  * four entries in five belong to the calendar's owner (no <user>), the others to colleagues
  * a to-do's <end> is its due moment; only events recur
  * all times are local wall-clock ("floating" in iCalendar; --ics-tz Europe/Helsinki
    writes the same wall-clock times with a TZID and a VTIMEZONE)
"""
import argparse
import datetime as dt
import json
import random
import sys

FIRST = ("Åsa Björn Märta Öyvind Jürgen Päivi Zoë Anna Juhani Sören Inga Kalle Renée Šárka "
         "Lars Elin Otto Tuula Niklas Liisa Günter Heß Matti Olga Peter Ulla").split()
LAST = ("Sjöberg Mäkinen Größmann Ångström Nyström Virtanen Köhler Lindqvist Öberg Straße "
        "Korhonen Hämäläinen Johansson Weiß Žižka Nieminen Lehtonen Ek Berg Håkansson").split()
WORDS = ("budget review planning meeting projekt möte över styrelse kundbesök träning lunch "
         "release sprint demo retrospective Größe Übergabe täglich Jahresabschluß päätös "
         "työpöytä äkta råd förslag offer contract visit train flight hotel budjetti 100€ "
         "25€/h draft agenda notes follow-up call conference room server migration backup "
         "test plan design audit report status sync interview onboarding kick-off workshop "
         "holiday semester läkare tandläkare skola dagis städning matinköp fika").split()
NASTY = ('R&D', 'a<b', 'x>y', '"quoted"', "it's", 'A & B', '<todo>', 'C:\\dir\\f', 'one; two',
         'red, green', '&amp;', 'if (a<b && c>d)', '50% off', '€5 & up', 'ä<ö>å')
WD_ICS = (None, 'MO', 'TU', 'WE', 'TH', 'FR', 'SA', 'SU')
EVENT, TODO = 1, 2
DAILY, WEEKLY, MONTHLY, YEARLY = 1, 2, 3, 4
DAY = dt.timedelta(days=1)


class Gen:
    def __init__(self, seed, n, today):
        self.r = random.Random(seed).random
        self.n = n
        self.today = today
        self.now = dt.datetime(today.year, today.month, today.day, 8, 0)
        self.first = today - dt.timedelta(days=3 * 365 + 1)
        self.span = 6 * 365 + 1
        self.stats = {}
        self.accounts = self.make_accounts()

    # -- primitives -----------------------------------------------------------
    def ri(self, a, b):
        return a + int(self.r() * (b - a + 1))

    def pick(self, seq):
        return seq[int(self.r() * len(seq))]

    def chance(self, p):
        return self.r() < p

    def count(self, key, by=1):
        self.stats[key] = self.stats.get(key, 0) + by

    # -- content --------------------------------------------------------------
    def make_accounts(self):
        out = []
        for i in range(max(20, min(1000, self.n // 100))):
            name = '%s %s' % (self.pick(FIRST), self.pick(LAST))
            if self.chance(0.03):
                name = '%s "%s" %s' % (name.split()[0], self.pick(('R&D', 'Bo<b')), name.split()[1])
            typ = 1 if self.r() < 0.9 else 2
            out.append(dict(id=100 + i, name=name, email='user%d@example.org' % (100 + i),
                            type=typ, status=0, attendee=0))
        return out

    def words(self, lo, hi):
        w = []
        for _ in range(self.ri(lo, hi)):
            w.append(self.pick(NASTY) if self.chance(0.06) else self.pick(WORDS))
        return ' '.join(w)

    def title(self):
        s = self.words(2, 6)
        return s[:1].upper() + s[1:]

    def description(self):
        if self.chance(0.40):
            return ''
        return '\n'.join(self.words(3, 11) for _ in range(self.ri(1, 7)))

    def attendees(self):
        if not self.chance(0.20):
            return []
        k = self.ri(1, 12)
        base = self.ri(0, len(self.accounts) - 1)
        step = self.pick((1, 3, 7, 11))
        seen, out = set(), []
        for j in range(k):
            a = self.accounts[(base + j * step) % len(self.accounts)]
            if a['id'] in seen:
                continue
            seen.add(a['id'])
            role = 2 if a['type'] == 2 else (1 if self.chance(0.2) else 0)
            out.append(dict(a, status=self.pick((0, 2, 3, 4, 4)), attendee=role))
        return out

    # -- recurrence: DTSTART always satisfies the rule ------------------------
    def recurrence(self, e):
        x = self.r()
        d = e['start'].date()
        if x < 0.15:
            rec = dict(type=DAILY, every=self.pick((1, 1, 1, 2, 3, 7)), days=[], daynumber=0)
            cnt, ln = self.ri(3, 30), self.ri(3, 120)
            self.count('rec_daily')
        elif x < 0.60:
            days = {d.isoweekday()}
            for _ in range(self.pick((0, 0, 0, 0, 1, 1, 2, 4))):
                days.add(self.ri(1, 5))
            rec = dict(type=WEEKLY, every=self.pick((1, 1, 1, 2, 4)), days=sorted(days), daynumber=0)
            cnt, ln = self.ri(4, 60), self.ri(14, 500)
            self.count('rec_weekly')
        elif x < 0.75:
            if d.day > 28:          # keep every month eligible
                d = d.replace(day=28)
                self.shift_to(e, d)
            rec = dict(type=MONTHLY, every=self.pick((1, 1, 1, 2, 3)), days=[d.day], daynumber=0)
            cnt, ln = self.ri(3, 36), self.ri(60, 900)
            self.count('rec_monthly_day')
        elif x < 0.90:
            nth = (d.day - 1) // 7 + 1
            last = (d + 7 * DAY).month != d.month
            if nth == 5 or (last and self.chance(0.5)):
                nth = -1
            rec = dict(type=MONTHLY, every=self.pick((1, 1, 1, 2, 3)), days=[d.isoweekday()], daynumber=nth)
            cnt, ln = self.ri(3, 36), self.ri(60, 900)
            self.count('rec_monthly_weekday')
        else:
            if (d.month, d.day) == (2, 29):
                d = d.replace(day=28)
                self.shift_to(e, d)
            rec = dict(type=YEARLY, every=self.pick((1, 1, 1, 1, 2)), days=[], daynumber=0)
            cnt, ln = self.ri(2, 10), self.ri(400, 2500)
            self.count('rec_yearly')
        y = self.r()
        if y < 0.35:
            rec['count'] = cnt
            self.count('rec_with_count')
        elif y < 0.75:
            rec['enddate'] = d + ln * DAY       # exclusive
            self.count('rec_with_enddate')
        else:
            self.count('rec_open')
        return rec

    @staticmethod
    def shift_to(e, d):
        delta = d - e['start'].date()
        e['start'] += delta
        e['end'] += delta

    # -- one entry ------------------------------------------------------------
    def entry(self, i):
        e = dict(localid=i + 1, globalid=0 if self.chance(0.02) else 5000000 + i,
                 dirty=1 if self.chance(0.02) else 0)
        e['type'] = EVENT if self.chance(0.85) else TODO
        e['title'] = self.title()
        e['description'] = self.description()
        day = self.first + self.ri(0, self.span) * DAY
        e['notime'] = self.chance(0.05)
        if e['notime']:
            ndays = 1 if self.chance(0.7) else self.ri(2, 14)
            e['start'] = dt.datetime(day.year, day.month, day.day)
            e['end'] = e['start'] + dt.timedelta(days=ndays - 1, hours=23, minutes=59)
            self.count('allday')
            if ndays > 1:
                self.count('multiday')
        else:
            x = self.r()
            if x < 0.02:            # over midnight
                h, m, dur = self.ri(20, 23), self.pick((0, 30)), self.ri(5, 9) * 60 + 15
                self.count('over_midnight')
            elif x < 0.04:          # several days, with times
                h, m, dur = self.ri(8, 17), 0, self.ri(1, 6) * 1440 + self.ri(-4, 4) * 60 + 15
                self.count('multiday')
            else:
                h, m = self.ri(7, 18), self.pick((0, 0, 0, 30, 30, 15, 45, 5))
                dur = self.pick((15, 30, 30, 45, 60, 60, 60, 90, 120, 180, 240))
            e['start'] = dt.datetime(day.year, day.month, day.day, h, m)
            e['end'] = e['start'] + dt.timedelta(minutes=dur)
        e['user'] = 0 if self.chance(0.8) else self.pick(self.accounts)['id']
        e['access'] = 2 if self.chance(0.15) else 1
        x = self.r()
        e['display'] = 1 if x < 0.8 else (2 if x < 0.9 else 3)
        e['priority'] = self.ri(1, 9) if self.chance(0.2) else 0
        e['complete'] = e['type'] == TODO and self.chance(0.85 if e['end'] < self.now else 0.05)
        e['rec'] = None
        if e['type'] == EVENT and self.chance(0.10 / 0.85):
            e['rec'] = self.recurrence(e)
            self.count('recurring')
        e['reminder'] = None
        if self.chance(0.30):
            e['reminder'] = self.pick((0, 5, 10, 15, 15, 15, 30, 60, 120, 1440, 10080))
            e['fired'] = e['start'] - dt.timedelta(minutes=e['reminder']) < self.now
            self.count('reminders')
        e['attendees'] = self.attendees()
        self.count('events' if e['type'] == EVENT else 'todos')
        if e['attendees']:
            self.count('with_attendees')
            self.count('attendee_rows', len(e['attendees']))
        if e['description']:
            self.count('with_description')
        return e


# -- XML writer ----------------------------------------------------------------
def xd(d):
    return '%d-%d-%d' % (d.year, d.month, d.day)


def xdt(t):
    return '%d-%d-%d %d:%d' % (t.year, t.month, t.day, t.hour, t.minute)


def xesc(s):
    return s.replace('&', '&amp;').replace('<', '&lt;').replace('>', '&gt;')


def field(indent, name, value):
    """One element line, or nothing when the value is empty or zero."""
    return '%s<%s>%s</%s>\n' % (indent, name, value, name) if value else ''


def xml_account(a):
    return (' <account>\n  <id>%d</id>\n  <name>%s</name>\n' % (a['id'], xesc(a['name']))
            + field('  ', 'email', xesc(a['email'])) + field('  ', 'type', a['type'])
            + field('  ', 'status', a['status']) + field('  ', 'attendee', a['attendee'])
            + ' </account>\n')


def xml_head(g):
    return ("<?xml version = '1.0' encoding = 'ISO-8859-15' ?>\n<calendar>\n<meta>\n <userid>%d</userid>\n"
            " <origright>4</origright>\n <synctime>%s</synctime>\n</meta>\n" % (g.accounts[0]['id'], xdt(g.now)))


def xml_entry(e):
    r = e['rec'] or {}
    end = xd(r['enddate']) if 'enddate' in r else ''
    return (
        '<entry>\n <localid>%d</localid>\n <globalid>%d</globalid>\n <dirty>%d</dirty>\n <title>%s</title>\n'
        % (e['localid'], e['globalid'], e['dirty'], xesc(e['title']))
        + ' <start>%s</start>\n <end>%s</end>\n <type>%d</type>\n' % (xdt(e['start']), xdt(e['end']), e['type'])
        + field(' ', 'user', e['user']) + field(' ', 'description', xesc(e['description']))
        + field(' ', 'access', e['access']) + field(' ', 'display', e['display'])
        + field(' ', 'priority', e['priority']) + field(' ', 'notime', int(e['notime']))
        + field(' ', 'complete', int(e['complete'])) + field(' ', 'reminder', e['reminder'] or 0)
        + field(' ', 'reminderfired', int(bool(e['reminder'] and e['fired'])))
        + field(' ', 'recurringtype', r.get('type', 0)) + field(' ', 'occurevery', r.get('every', 0))
        + field(' ', 'occurdays', ','.join(map(str, r.get('days', ()))))
        + field(' ', 'occurdaynumber', r.get('daynumber', 0)) + field(' ', 'occurenddate', end)
        + field(' ', 'occurendcount', r.get('count', 0))
        + ''.join(xml_account(a) for a in e['attendees']) + '</entry>\n')


# -- iCalendar writer ------------------------------------------------------------
def iesc(s):
    return s.replace('\\', '\\\\').replace(';', '\\;').replace(',', '\\,').replace('\n', '\\n')


def fold(line):
    b = line.encode('utf-8')
    if len(b) <= 75:
        return b + b'\r\n'
    out, first = [], True
    while b:
        lim = 75 if first else 74
        if len(b) > lim:
            cut = lim
            while (b[cut] & 0xC0) == 0x80:
                cut -= 1
        else:
            cut = len(b)
        out.append((b'' if first else b' ') + b[:cut])
        b = b[cut:]
        first = False
    return b'\r\n'.join(out) + b'\r\n'


def cn(name):       # DQUOTE is not allowed in a parameter value
    n = name.replace('"', "'")
    return '"%s"' % n if any(c in n for c in ',;:<>&\' ') else n


PARTSTAT = {0: 'NEEDS-ACTION', 2: 'DECLINED', 3: 'TENTATIVE', 4: 'ACCEPTED'}
CUTYPE = {1: 'INDIVIDUAL', 2: 'RESOURCE'}

VTZ = """BEGIN:VTIMEZONE
TZID:Europe/Helsinki
BEGIN:STANDARD
DTSTART:19961027T040000
RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU
TZOFFSETFROM:+0300
TZOFFSETTO:+0200
TZNAME:EET
END:STANDARD
BEGIN:DAYLIGHT
DTSTART:19970330T030000
RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU
TZOFFSETFROM:+0200
TZOFFSETTO:+0300
TZNAME:EEST
END:DAYLIGHT
END:VTIMEZONE
"""


def ics_head(tz):
    s = 'BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//perf//gen_calendar//EN\n'
    if tz:
        s += VTZ
    return s.replace('\n', '\r\n').encode()


def ics_entry(e, accounts, tz, stamp):
    o = []
    w = o.append
    comp = 'VEVENT' if e['type'] == EVENT else 'VTODO'
    w('BEGIN:' + comp)
    w('UID:e%d' % e['localid'])
    w('DTSTAMP:' + stamp)
    w('X-PERF-LOCALID:%d' % e['localid'])
    w('X-PERF-USER:%d' % e['user'])
    if e['dirty']:
        w('X-PERF-DIRTY:1')
    w('SUMMARY:' + iesc(e['title']))
    if e['description']:
        w('DESCRIPTION:' + iesc(e['description']))
    endname = 'DTEND' if comp == 'VEVENT' else 'DUE'
    if e['notime']:
        last = e['end'].date() + (DAY if comp == 'VEVENT' else 0 * DAY)    # DTEND is exclusive
        w('DTSTART;VALUE=DATE:' + e['start'].strftime('%Y%m%d'))
        w('%s;VALUE=DATE:%s' % (endname, last.strftime('%Y%m%d')))
    else:
        p = ';TZID=' + tz if tz else ''
        w('DTSTART%s:%s' % (p, e['start'].strftime('%Y%m%dT%H%M%S')))
        w('%s%s:%s' % (endname, p, e['end'].strftime('%Y%m%dT%H%M%S')))
    w('CLASS:' + ('PUBLIC' if e['access'] == 1 else 'PRIVATE'))
    if comp == 'VEVENT':
        w('TRANSP:' + ('TRANSPARENT' if e['display'] == 2 else 'OPAQUE'))
        if e['display'] == 3:
            w('STATUS:TENTATIVE')
    if e['priority']:
        w('PRIORITY:%d' % e['priority'])
    if e['complete']:
        w('STATUS:COMPLETED')
        w('PERCENT-COMPLETE:100')
        w('COMPLETED:' + stamp)
    if e['attendees']:
        org = accounts[max(0, e['user'] - 100)]
        w('ORGANIZER;CN=%s:mailto:%s' % (cn(org['name']), org['email']))
        for a in e['attendees']:
            w('ATTENDEE;CN=%s;CUTYPE=%s;ROLE=REQ-PARTICIPANT;PARTSTAT=%s;X-PERF-ID=%d:mailto:%s'
              % (cn(a['name']), CUTYPE[a['type']], PARTSTAT[a['status']], a['id'], a['email']))
    r = e['rec']
    if r:
        s = 'RRULE:FREQ=' + {DAILY: 'DAILY', WEEKLY: 'WEEKLY', MONTHLY: 'MONTHLY', YEARLY: 'YEARLY'}[r['type']]
        if 'count' in r:
            s += ';COUNT=%d' % r['count']
        if 'enddate' in r:
            last = r['enddate'] - DAY
            if e['notime']:
                s += ';UNTIL=' + last.strftime('%Y%m%d')
            elif tz:    # must be UTC then; +1 day 00:00 local is never before 21:00 UTC of `last`
                s += ';UNTIL=' + last.strftime('%Y%m%dT205900Z')
            else:
                s += ';UNTIL=' + last.strftime('%Y%m%dT235959')
        if r['every'] != 1:
            s += ';INTERVAL=%d' % r['every']
        if r['type'] == WEEKLY:
            s += ';BYDAY=' + ','.join(WD_ICS[d] for d in r['days'])
        elif r['type'] == MONTHLY and r['daynumber']:
            s += ';BYDAY=%d%s' % (r['daynumber'], WD_ICS[r['days'][0]])
        elif r['type'] == MONTHLY:
            s += ';BYMONTHDAY=' + ','.join(map(str, r['days']))
        w(s)
    if e['reminder'] is not None:
        w('BEGIN:VALARM')
        w('ACTION:DISPLAY')
        w('DESCRIPTION:Reminder')
        w('TRIGGER:-PT%dM' % e['reminder'] if e['reminder'] else 'TRIGGER:PT0S')
        if e['fired']:
            w('X-PERF-FIRED:1')
        w('END:VALARM')
    w('END:' + comp)
    return b''.join(fold(x) if len(x) > 25 else x.encode('utf-8') + b'\r\n' for x in o)


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument('-n', '--count', type=int, default=1000)
    ap.add_argument('--seed', type=int, default=20261121)
    ap.add_argument('--today', default='2026-11-21')
    ap.add_argument('--xml')
    ap.add_argument('--ics')
    ap.add_argument('--ics-tz', default='', help="'' = floating (default), or Europe/Helsinki")
    ap.add_argument('--stats')
    a = ap.parse_args()
    if a.ics_tz not in ('', 'Europe/Helsinki'):
        ap.error('only Europe/Helsinki is built in')
    g = Gen(a.seed, a.count, dt.date.fromisoformat(a.today))
    stamp = g.now.strftime('%Y%m%dT%H%M%SZ')
    fx = open(a.xml, 'wb') if a.xml else None
    fi = open(a.ics, 'wb') if a.ics else None
    if fx:
        fx.write(xml_head(g).encode('iso-8859-15'))
        for acc in g.accounts:
            fx.write(xml_account(acc).encode('iso-8859-15'))
    if fi:
        fi.write(ics_head(a.ics_tz))
    for i in range(a.count):
        e = g.entry(i)
        if fx:
            fx.write(xml_entry(e).encode('iso-8859-15'))
        if fi:
            fi.write(ics_entry(e, g.accounts, a.ics_tz, stamp))
    if fx:
        fx.write(b'</calendar>\n')
        g.stats['xml_bytes'] = fx.tell()
        fx.close()
    if fi:
        fi.write(b'END:VCALENDAR\r\n')
        g.stats['ics_bytes'] = fi.tell()
        fi.close()
    g.stats.update(count=a.count, seed=a.seed, today=a.today, accounts=len(g.accounts))
    js = json.dumps(g.stats, indent=1, sort_keys=True)
    if a.stats:
        with open(a.stats, 'w') as f:
            f.write(js + '\n')
    else:
        print(js)
    return 0


if __name__ == '__main__':
    sys.exit(main())
