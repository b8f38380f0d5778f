// The road: its line in the plan, arcs as true arcs, and the line of its profile.
// Eastings, northings, stations and levels are metres; an offset is positive to the right towards higher stations.

class Segment {
  constructor(a, b) {
    Object.assign(this, { n: a[0], e: a[1], s: a[3], endN: b[0], endE: b[1], endS: b[3], bulge: a[2] });
    const de = this.endE - this.e;
    const dn = this.endN - this.n;
    const chord = Math.hypot(de, dn);
    this.length = chord;
    this.reach = 0; // how far it may lie outside the box of its ends
    if (this.bulge === 0) return;
    const sign = Math.sign(this.bulge);
    const sagitta = (Math.abs(this.bulge) * chord) / 2;
    this.radius = ((chord * chord) / 4 + sagitta * sagitta) / (2 * sagitta);
    this.centreE = (this.e + this.endE) / 2 - (sign * (this.radius - sagitta) * dn) / chord;
    this.centreN = (this.n + this.endN) / 2 + (sign * (this.radius - sagitta) * de) / chord;
    this.start = Math.atan2(this.n - this.centreN, this.e - this.centreE);
    this.sweep = 4 * Math.atan(this.bulge);
    this.length = this.radius * Math.abs(this.sweep);
    this.reach = Math.max(sagitta, this.bulge * this.bulge > 1 ? 2 * this.radius : 0);
  }

  // From 0 at its start to 1 at its end, with the direction there as a unit vector.
  at(part) {
    if (this.bulge === 0) {
      const de = this.endE - this.e;
      const dn = this.endN - this.n;
      return { e: this.e + part * de, n: this.n + part * dn, de: de / this.length, dn: dn / this.length };
    }
    const angle = this.start + part * this.sweep;
    const turn = Math.sign(this.sweep);
    return {
      e: this.centreE + this.radius * Math.cos(angle),
      n: this.centreN + this.radius * Math.sin(angle),
      de: -turn * Math.sin(angle),
      dn: turn * Math.cos(angle),
    };
  }

  // Metres along and to the right of the foot of a point; nothing when it lies beyond the ends.
  foot(e, n) {
    if (this.bulge === 0) {
      const de = this.endE - this.e;
      const dn = this.endN - this.n;
      const part = ((e - this.e) * de + (n - this.n) * dn) / (this.length * this.length);
      if (part < -0.0001 || part > 1.0001) return null;
      const offset = (dn * (e - this.e) - de * (n - this.n)) / this.length;
      return { along: Math.min(Math.max(part, 0), 1) * this.length, offset };
    }
    const turn = Math.sign(this.sweep);
    let angle = (Math.atan2(n - this.centreN, e - this.centreE) - this.start) * turn;
    angle -= 2 * Math.PI * Math.floor(angle / (2 * Math.PI));
    const sweep = Math.abs(this.sweep);
    if (angle > sweep + 1e-9 && angle < 2 * Math.PI - 1e-9) return null;
    const offset = (Math.hypot(e - this.centreE, n - this.centreN) - this.radius) * turn;
    return { along: (angle > sweep + 1e-9 ? 0 : Math.min(angle, sweep)) * this.radius, offset };
  }
}

class Road {
  // Points are [northing, easting, bulge, station], of the profile [level, station, bulge, station].
  constructor(plan, profile) {
    this.points = plan;
    this.profile = profile;
    this.segments = [];
    for (let i = 0; i + 1 < plan.length; ++i) {
      if (Math.hypot(plan[i + 1][0] - plan[i][0], plan[i + 1][1] - plan[i][1]) >= 1e-4) {
        this.segments.push(new Segment(plan[i], plan[i + 1]));
      }
    }
    this.descending = plan.length > 1 && plan[0][3] > plan[1][3];
    const stations = (this.segments.length > 0 ? plan : profile).map((p) => p[3]);
    this.firstStation = stations.reduce((a, b) => Math.min(a, b), Infinity);
    this.lastStation = stations.reduce((a, b) => Math.max(a, b), -Infinity);
  }

  // The nearest place on the line; its offset is null beyond the ends of the road.
  nearest(e, n) {
    let found = null;
    let best = Infinity;
    for (const segment of this.segments) {
      const foot = segment.foot(e, n);
      if (!foot || !(Math.abs(foot.offset) < best)) continue;
      best = Math.abs(foot.offset);
      found = {
        ...segment.at(foot.along / segment.length),
        station: segment.s + (this.descending ? -foot.along : foot.along),
        offset: this.descending ? -foot.offset : foot.offset,
      };
    }
    const last = this.segments.length - 1;
    for (let i = 0; i <= last + 1; ++i) {
      // The corner before segment i, or the end of the line.
      const at = this.segments[Math.min(i, last)]?.at(i <= last ? 0 : 1);
      if (!at) break;
      const distance = Math.hypot(e - at.e, n - at.n);
      if (!(distance < best)) continue;
      best = distance;
      const isEnd = i === 0 || i > last;
      const before = isEnd ? at : this.segments[i - 1].at(1);
      const side = (before.dn + at.dn) * (e - at.e) - (before.de + at.de) * (n - at.n);
      found = {
        ...at,
        station: i <= last ? this.segments[i].s : this.segments[last].endS,
        offset: isEnd ? null : side < 0 !== this.descending ? -distance : distance,
      };
    }
    return found;
  }

  // The place on the line at a station; nothing beyond its ends.
  at(station) {
    for (const segment of this.segments) {
      const part = (station - segment.s) / (segment.endS - segment.s);
      if (part >= 0 && part <= 1) return segment.at(part);
    }
    return null;
  }

  // The level of the profile at a station; nothing beyond its ends.
  levelAt(station) {
    const i = this.profile.findIndex((p) => p[1] > station);
    if (i <= 0) {
      const last = this.profile.at(-1);
      return i < 0 && this.profile.length > 1 && last[1] === station ? last[0] : null;
    }
    const [a, b] = [this.profile[i - 1], this.profile[i]];
    const part = (station - a[3]) / (b[3] - a[3]);
    let level = a[0] + part * (b[0] - a[0]);
    if (Math.abs(a[2]) > 1e-6) {
      const arc = new Segment(a, b);
      const end = Math.atan2(b[0] - arc.centreN, b[1] - arc.centreE);
      level = arc.centreN + arc.radius * Math.sin(arc.start + (end - arc.start) * part);
    }
    // Stations that do not match, or an extreme bulge, leave the straight between the points.
    return Math.abs(level) <= 1e9 ? level : a[0] + ((station - a[1]) / (b[1] - a[1])) * (b[0] - a[0]);
  }
}
