// The profile: level over station, heights exaggerated, with the borings at their levels.
#ifndef VELMORA_CLI_PLOT_PROFILE_VIEW_H_
#define VELMORA_CLI_PLOT_PROFILE_VIEW_H_

#include "cli/plot/drawing.h"
#include "cli/plot/plan_path.h"
#include "cli/plot/profile_frame.h"
#include "cli/plot/profile_line.h"
#include "cli/plot/style.h"
#include "cli/plot/svg.h"

namespace velmora::cli::plot {

struct ProfileSummary {
  std::string scales;        // "lengths 1:5000, heights 1:500, 10 times exaggerated"
  size_t off_sheet = 0;      // placed borings whose level lies far from the line
  size_t without_label = 0;  // labels that found no room
};

// Stations rise to the right whatever the plan's do. `plan_scale` is used for the lengths where it makes
// fair use of the sheet; 0 for none.
ProfileSummary DrawProfile(Svg& svg, const Panel& panel, const PlotInput& input, const PlanPath& path,
                           const ProfileLine& profile, double plan_scale);

// What the parts of the profile draw on.
struct ProfileSheet {
  Svg& svg;
  const Panel& plot;
  const ProfileFrame& frame;
  const ProfileLine& line;
  LabelRoom& room;
  bool km;
};

}  // namespace velmora::cli::plot

#endif  // VELMORA_CLI_PLOT_PROFILE_VIEW_H_
