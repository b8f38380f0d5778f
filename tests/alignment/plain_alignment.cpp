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

// The two legs of a direction: along the axis at the quadrant's beginning and along the one at its end.
void Quadrant(double dh, double dv, double* q, double* theta) {
  int n = 3;
  double begin = -dv, end = dh;
  if (dh >= 0 && dv >= 0) {
    n = 0, begin = dh, end = dv;
  } else if (dh < 0 && dv >= 0) {
    n = 1, begin = dv, end = -dh;
  } else if (dh <= 0 && dv < 0) {
    n = 2, begin = -dh, end = -dv;
  }
  const double turn = n == 0 ? 0 : n == 1 ? 1.570796326795 : 3.14159265359;
  const double more = n == 3 ? 1.570796326795 : 0;
  *q = n;
  *theta = turn + more;
  if (!(begin > 1e-5) || (n == 0 && end == 0)) return;
  const double k = end / begin;
  *q = (std::sqrt(k * k + 1) - 1) / k + n;
  *theta = 2 * std::atan(*q - n) + turn + more;
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
  const double first = a.bulge > 0 ? qa : qb, last = a.bulge > 0 ? qb : qa;
  const bool inside = first > last ? qp >= first || qp <= last : first <= qp && qp <= last;
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
  if (descending ? sek > p[0].sek + 0.0001 : sek < p[0].sek - 0.0001) return -1;
  for (;;) {
    if (current == Last()) return -1;
    ++current;
    if (descending ? sek > At(current).sek - 0.0001 : At(current).sek + 0.0001 > sek) break;
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
  const bool falls = a0 > a1, direct = std::fabs(a1 - a0) < 3.14159265359;
  if (!direct) (falls ? a0 : a1) -= 6.28318530718;
  const double r = falls == direct ? radius - avst : radius + avst;
  const double theta = a0 + (sek - a.sek) * (a1 - a0) / (b.sek - a.sek);
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

  bool last_one = false;
  while (current < Last()) {
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
    if (lage == 1 && (last_one || current == Last())) break;
    last_one = *sek < 9999999.0;
    mark = current;
  }
  const bool to_vertices = lage == 0 || (lage == 1 && *sek > 9999999.0);
  if (!to_vertices) return best > 1e9 ? -1 : 0;

  int nearest = -1;
  double distance = 0, side = 0, unused;
  for (current = from; current <= Last(); ++current) {
    const double d = Length(y - At(current).y, x - At(current).x);
    if (nearest >= 0 && !(d < distance)) continue;
    nearest = current;
    distance = d;
    side = 0;
    if (current == 0) continue;
    const kovltype &a = At(current - 1), &b = At(current);
    Pldist(a.y, a.x, b.y, b.x, y, x, &side, &unused);
  }
  current = Last();
  if (best > distance && nearest != 0 && nearest != Last()) {
    *avst = side < 0 ? -distance : distance;
    *sek = At(nearest).sek;
    return 0;
  }
  return best > 1e9 ? -1 : 0;
}

}  // namespace velmora
