// The points that alignments are made of.
//
// Held throughout this folder: x is northing and y easting, in metres; angles are radians,
// counter-clockwise from east; an offset is positive to the right of the direction in which the points
// are listed.
#ifndef VELMORA_ALIGNMENT_ALIGNMENT_POINT_H_
#define VELMORA_ALIGNMENT_ALIGNMENT_POINT_H_

namespace velmora {

// A point of an alignment. Its bulge shapes the segment that starts here; the last point's does nothing.
struct kovltype {
  double x;      // northing, m; in a profile the level
  double y;      // easting, m; in a profile the station
  double bulge;  // tan(sweep / 4): 0 straight, > 0 turning counter-clockwise
  double sek;    // station, m
};

// A point handed to CVaglinje::Bulge_r.
struct kokotype {
  double ko1;    // horizontal: a kovltype's y
  double ko2;    // vertical: a kovltype's x
  double bulge;  // of the segment that starts here
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_ALIGNMENT_POINT_H_
