// Road alignment: points joined by straights and arcs, each point with a station. The same class holds
// a plan (map coordinates) or a vertical profile (level and station), as `typ` says.
//
// Units, axes and signs are those of alignment_point.h:
//
//        . offset < 0
//   A ----------------> B
//        . offset > 0
//
// An alignment is descending when it has two points and the first's station is above the second's,
// else ascending. For one thread at a time: even a look-up moves the current point and the mark.
#ifndef VELMORA_ALIGNMENT_VAGLINJE_H_
#define VELMORA_ALIGNMENT_VAGLINJE_H_

#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/core/list0.h"
#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

struct StationSearch;

// Operations on a plan return -1 and touch nothing when `typ` is 10, a profile; Vagprofz returns -1
// when it is 1, a plan. Any other type lets both run.
class VELMORA_API CVaglinje : public list0<kovltype> {
 public:
  double omrSekMin = 0;    // working area: lowest station, m
  double omrSekMax = 0;    // highest station
  double omrAvstMin = 0;   // smallest offset, the left limit
  double omrAvstMax = 0;   // largest offset, the right limit
  int typ = 0;             // 1 plan, 10 profile
  wchar_t namn[256] = {};  // the alignment's name
  CString filnamn;         // the file last read, without folder

  static double Seknoll;  // the station that Vagstv reports before it has found one
  static double Sekkoll;  // a station below this counts as found

  CVaglinje() = default;
  ~CVaglinje() override = default;

  // --- file (vaglinje_file.cpp); alignment_format.h describes the format

  // Replaces the points by the file's. A line that is not a point is reported in the status bar ("Fel rad :
  // ...") and skipped. `typ` stays when the first line has none. Null only empties the list.
  // Returns 0; -1 after a message box, with the list empty, when the file cannot be opened or read. @{
  int Init(const wchar_t* file);
  int Init(const CString& file) { return Init(file.GetString()); }
  // @}
  // Writes the file; the old one is whole until the new one takes its place. An empty alignment gives an
  // empty file. Returns 0; -1 after a message box when the file cannot be written or the name has a
  // character that the file's encoding lacks, and the old file is as it was. @{
  int Uppdat(const wchar_t* file);
  int Uppdat(const CString& file) { return Uppdat(file.GetString()); }
  // @}

  // Sets the working area: the first point's station to the last's, 30 m to either side. Callers rely
  // on descending stations giving an area that admits no station (tests/alignment/recorded).
  // Returns 0; -1 with an area of zeros on an empty alignment.
  int Reset();
  // As list0: 1 appends, any other value inserts before the current point.
  int Ny(int where, const kovltype* point = nullptr) { return list0<kovltype>::Ny(where, point); }

  // --- plan (vaglinje_plan.cpp)

  // Station and offset to map point. Stations within 0.1 mm of either end still count as on the line.
  // Returns 0; -1 when the station is off the line or there is no second point, and *x and *y are then
  // 999999.9.
  //
  // On the straight (0, 0) -> (0, 100) with stations 0 to 100:
  //   Vag2xy(50, 5, &x, &y)   // x = -5, y = 50: going east, right is south
  int Vag2xy(double sek, double avst, double* x, double* y);

  // Map point to station and offset: the segment with the nearest foot, of equal ones the first, else
  // the nearest vertex that is not an end. `lage` 0 searches every segment; 1 a part of the list guessed
  // from the distances to its ends, which may miss what 0 finds (callers rely on what it answers); any
  // other value is 0 without the vertices.
  // Returns 0; -1 when nothing is found, with Seknoll in *sek and 0 in *avst.
  //
  // On descending stations the offset changes sign here and not in Vag2xy, so a round trip
  // comes back with the other sign. Intended; held by tests/alignment/recorded/round_trips.txt.
  int Vagstv(double x, double y, double* sek, double* avst, int lage);

  // The foot of (px, py) on the straight (x1, y1)-(x2, y2), the first of each pair horizontal. Returns 1
  // inside the segment, 2 outside; 0 with the outputs untouched for a segment shorter than 1 cm.
  int Pldist(double x1, double y1, double x2, double y2, double px, double py, double* avst, double* langs);
  // The foot of the map point (x, y) on the arc from *a, with its bulge, to *b. Returns 1 inside the
  // arc's angle; 2 outside, with the outputs untouched.
  int Padist(kovltype* a, kovltype* b, double x, double y, double* langs, double* avst);

  // Radius and centre of an arc, or its bulge; for profiles too. `riktning` other than 0: radius and centre
  // (*k1 horizontal, *k2 vertical) of the arc from *a, with its bulge, to *b. 0: the bulge of *a from *radie,
  // a positive radius giving a negative bulge; a radius below half the chord is reported in the status bar
  // and gives 0. Always 0.
  int Bulge_r(kokotype* a, kokotype* b, double* radie, double* k1, double* k2, int riktning);

  // Lengthens the alignment straight on by `fore` metres at its start and `efter` at its end, where
  // these are above 0. Callers rely on the new points lying half a metre nearer than their stations say
  // (tests/alignment/recorded). Returns 0; -1 when an end cannot be placed, as at any
  // alignment with descending stations.
  int Extend(double fore, double efter);

  // Vagstv, held to the working area (stations with 1 mm to spare). Returns 0 with the outputs that are
  // not null; -1 outside or when nothing is found.
  int PktIomr(double x, double y, double* sek, double* avst, int lage);

  // The points in order. Moves neither the current point nor the mark.
  std::vector<kovltype> Points() const;

  // The current point, as the last operation left it. -1 when there is none.
  int Vagnu(double* x, double* y, double* sek);

  // --- profile and stations (vaglinje_profile.cpp)

  // The level at a station. Points hold the level in x and the station in both y and sek. Returns 0; -1
  // with 999999.9 in a plan, before the first point, and at the last point's station or beyond.
  int Vagprofz(double sek, double* z);

  // Sets every station from `start` and the lengths of the segments. Callers rely on each segment being
  // taken as straight or arc by its later point's bulge, where every other operation goes by the earlier
  // one's (tests/alignment/recorded). Returns 0, also on an empty alignment.
  int SektBerak(double start);
  // Shifts all stations so that the point within 1 mm of (x, y), of several the last, gets `sek`.
  // Returns 0; -1 with nothing changed when there is none.
  int SektKorr(double x, double y, double sek);

 private:
  bool IsDescending() const;
  // The point before the current one; null at the first.
  const kovltype* Previous() const;
  Node* NarrowSearch(double x, double y, Node** last);
  bool SearchSegments(double x, double y, int lage, const Node* last, StationSearch* search);
  bool NearestVertex(double x, double y, Node* start, double best, double* sek, double* avst);
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_VAGLINJE_H_
