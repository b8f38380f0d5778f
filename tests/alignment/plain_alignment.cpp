#include "tests/alignment/plain_alignment.h"

#include <cmath>

namespace velmora {
namespace {

double Length(double dh, double dv) { return std::sqrt(dh * dh + dv * dv); }

void Circle(double ah, double av, double bh, double bv, double bulge, double* radius, double* hc,
            double* vc) {
  const double c = Length(bh - ah, bv - av);
  const double s = bulge < 0 ? -1 : 1;
  const double t = std::fabs(bulge * c * 0.5);
  *radius = (c * c * 0.25 + t * t) / (t + t);
  *hc = (ah + bh) * 0.5 - s * (*radius - t) * (bv - av) / c;
  *vc = (av + bv) * 0.5 + s * (*radius - t) * (bh - ah) / c;
}

void Quadrant(double dh, double dv, double* q, double* theta) {
  double k = 0;
  if (dh >= 0 && dv >= 0) {
    *q = *theta = 0;
    if (dh > 1e-5) {
      k = dv / dh;
      if (k == 0) return;  // due east
      *q = (std::sqrt(k * k + 1) - 1) / k;
      *theta = 2 * std::atan(*q);
    }
  } else if (dh < 0 && dv >= 0) {
    *q = 1;
    *theta = 1.570796326795;
    if (dv > 1e-5) {
      k = -dh / dv;
      *q = (std::sqrt(k * k + 1) - 1) / k + 1;
      *theta = 2 * std::atan(*q - 1) + 1.570796326795;
    }
  } else if (dh <= 0 && dv < 0) {
    *q = 2;
    *theta = 3.14159265359;
    if (dh < -1e-5) {
      k = dv / dh;
      *q = (std::sqrt(k * k + 1) - 1) / k + 2;
      *theta = 2 * std::atan(*q - 2) + 3.14159265359;
    }
  } else {
    *q = 3;
    *theta = 3.14159265359 + 1.570796326795;
    if (dv < -1e-5) {
      k = -dh / dv;
      *q = (std::sqrt(k * k + 1) - 1) / k + 3;
      *theta = 2 * std::atan(*q - 3) + 3.14159265359 + 1.570796326795;
    }
  }
}

}  // namespace

int PlainAlignment::Pldist(double x1, double y1, double x2, double y2, double px, double py, double* avst,
                           double* langs) {
  const double dx = x2 - x1, dy = y2 - y1;
  const double squared = dx * dx + dy * dy;
  if (squared < 0.0001) return 0;
  const double u = ((py - y1) * dy + (px - x1) * dx) / squared;
  const double side = dy * (px - x1) - dx * (py - y1);
  *avst = std::fabs(side) / std::sqrt(squared);
  if (side < 0) *avst = -*avst;
  *langs = std::sqrt(squared) * u;
  return u < -0.0001 || u > 1.0001 ? 2 : 1;
}

int PlainAlignment::Padist(const kovltype& a, const kovltype& b, double x, double y, double* langs,
                           double* avst) {
  double radius, hc, vc, qp, qa, qb, tp, ta, tb;
  Circle(a.y, a.x, b.y, b.x, a.bulge, &radius, &hc, &vc);
  Quadrant(y - hc, x - vc, &qp, &tp);
  Quadrant(a.y - hc, a.x - vc, &qa, &ta);
  Quadrant(b.y - hc, b.x - vc, &qb, &tb);
  bool inside;
  if (a.bulge > 0)
    inside = qa > qb ? qp >= qa || qp <= qb : qa <= qp && qp <= qb;
  else
    inside = qb > qa ? qp >= qb || qp <= qa : qb <= qp && qp <= qa;
  if (!inside) return 2;
  *avst = (Length(y - hc, x - vc) - radius) * (a.bulge > 0 ? 1 : -1);
  if (a.bulge > 0 && ta > tp) ta -= 6.28318530718;
  if (a.bulge < 0 && tp > ta) tp -= 6.28318530718;
  *langs = std::fabs((tp - ta) * radius);
  return 1;
}

int PlainAlignment::Vag2xy(double sek, double avst, double* x, double* y) {
  *x = *y = 999999.9;
  if (p.empty()) return -1;
  const bool descending = Descending();
  current = mark = 0;
  if (!descending && sek < p[0].sek - 0.0001) return -1;
  if (descending && sek > p[0].sek + 0.0001) return -1;
  for (;;) {
    if (current == Last()) return -1;
    ++current;
    if (!descending && At(current).sek + 0.0001 > sek) break;
    if (descending && sek > At(current).sek - 0.0001) break;
    mark = current;
  }
  const kovltype &a = At(mark), &b = At(current);
  if (std::fabs(a.bulge) <= 1e-6) {
    const double f = (sek - a.sek) / (b.sek - a.sek);
    const double x0 = a.x + f * (b.x - a.x), y0 = a.y + f * (b.y - a.y);
    const double phi = std::atan2(a.x - b.x, b.y - a.y) - 1.570796326795;
    *x = x0 + std::sin(phi) * avst;
    *y = y0 - std::cos(phi) * avst;
    return 0;
  }
  double radius, hc, vc;
  Circle(a.y, a.x, b.y, b.x, a.bulge, &radius, &hc, &vc);
  double a0 = std::atan2(a.x - vc, a.y - hc), a1 = std::atan2(b.x - vc, b.y - hc);
  if (a0 < 0) a0 += 6.28318530718;
  if (a1 < 0) a1 += 6.28318530718;
  double start = a0, end = a1, r;
  if (std::fabs(a1 - a0) < 3.14159265359) {
    r = a0 > a1 ? radius - avst : radius + avst;
  } else if (a0 > a1) {
    start = a0 - 6.28318530718;
    r = radius + avst;
  } else {
    end = a1 - 6.28318530718;
    r = radius - avst;
  }
  const double theta = start + (sek - a.sek) * (end - start) / (b.sek - a.sek);
  *y = hc + std::cos(theta) * r;
  *x = vc + std::sin(theta) * r;
  return 0;
}

int PlainAlignment::Vagstv(double x, double y, double* sek, double* avst, int lage) {
  *avst = 0;
  *sek = 9999999.9;
  double best = 1.1e9;
  if (p.empty()) return -1;
  const bool descending = Descending();
  current = mark = 0;
  int from = 0;
  if (lage == 1) {
    double ignored, x1, y1;
    const double d0 = Length(y - p[0].y, x - p[0].x);
    Vag2xy(p[0].sek + d0, 0, &ignored, &ignored);
    for (int i = 0; i < 2 && current > 0; ++i) --current;
    from = current;
    current = Last();
    const double d1 = Length(y - At(current).y, x - At(current).x);
    const double s1 = At(current).sek - d1;
    Vag2xy(s1, 0, &x1, &y1);
    const double limit = s1 + Length(y - y1, x - x1);
    while (At(current).sek <= limit && current > 0) --current;
  }

  bool to_vertices = false, ended = false, last_one = false;
  while (!ended && current < Last()) {
    ++current;
    const kovltype &a = At(mark), &b = At(current);
    double along = 0, offset = 0;
    const int found = std::fabs(a.bulge) <= 1e-6 ? Pldist(a.y, a.x, b.y, b.x, y, x, &offset, &along)
                                                 : Padist(a, b, x, y, &along, &offset);
    if (found == 1 && std::fabs(offset) < best) {
      best = std::fabs(offset);
      *sek = descending ? a.sek - along : a.sek + along;
      *avst = descending ? -offset : offset;
    }
    if (lage == 1) {
      if (last_one || current == Last()) {
        ended = true;
        to_vertices = *sek > 9999999.0;
        if (!to_vertices) return best > 1e9 ? -1 : 0;
      }
      if (*sek < 9999999.0) last_one = true;
    }
    if (!ended) mark = current;
  }
  if (!ended) to_vertices = lage == 0 || (lage == 1 && *sek > 9999999.0);
  if (!to_vertices) return best > 1e9 ? -1 : 0;

  int nearest = -1;
  double distance = 0, with_sign = 0;
  for (current = from;; ++current) {
    const double d = Length(y - At(current).y, x - At(current).x);
    if (nearest < 0 || d < distance) {
      nearest = current;
      distance = with_sign = d;
      double side = 0, unused;
      if (current > 0) {
        const kovltype &a = At(current - 1), &b = At(current);
        if (Pldist(a.y, a.x, b.y, b.x, y, x, &side, &unused) != 0 && side < 0) with_sign = -d;
      }
    }
    if (current == Last()) break;
  }
  if (best > distance && nearest != 0 && nearest != Last()) {
    *avst = with_sign;
    *sek = At(nearest).sek;
    return 0;
  }
  return best > 1e9 ? -1 : 0;
}

int PlainAlignment::Vagprofz(double sek, double* z) {
  *z = 999999.9;
  if (p.empty()) return -1;
  current = mark = 0;
  if (p[0].y > sek) return -1;
  for (;;) {
    if (current == Last()) return -1;
    ++current;
    if (At(current).y > sek) break;
    mark = current;
  }
  const kovltype &a = At(mark), &b = At(current);
  if (std::fabs(a.bulge) <= 1e-6) {
    *z = a.x + (sek - a.sek) * (b.x - a.x) / (b.sek - a.sek);
    return 0;
  }
  double radius, sc, zc;
  Circle(a.y, a.x, b.y, b.x, a.bulge, &radius, &sc, &zc);
  const double fa = std::atan2(a.x - zc, a.y - sc), fb = std::atan2(b.x - zc, b.y - sc);
  *z = zc + radius * std::sin(fa + (fb - fa) * (sek - a.sek) / (b.sek - a.sek));
  return 0;
}

int PlainAlignment::SektBerak(double start) {
  if (p.empty()) return 0;
  p[0].sek = start;
  double station = start;
  for (current = 1; current <= Last(); ++current) {
    const kovltype &before = At(current - 1), &point = At(current);
    double along = 0, unused;
    if (std::fabs(point.bulge) <= 1e-6)
      along = Length(before.y - point.y, before.x - point.x);
    else
      Padist(point, before, before.x, before.y, &along, &unused);
    station += along;
    p[static_cast<size_t>(current)].sek = station;
  }
  return 0;
}

}  // namespace velmora
