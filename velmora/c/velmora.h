/* The C interface of velmora: alignments, settings, code files and project folders for programs in any
 * language.
 *
 *   velmora_error error;
 *   velmora_road *road;
 *   if (velmora_road_read("road.vl", NULL, &road, &error) != VELMORA_OK)
 *     fprintf(stderr, "%s:%lld: %s\n", error.file, (long long)error.line, error.text);
 *   double station, offset;
 *   int32_t place;
 *   velmora_locate(road, 1, &northing, 0, &easting, 0, &station, 0, &offset, 0, &place, 0, 0, 1, &error);
 *   velmora_road_close(road);
 *
 * No call shows a message, writes to standard output or standard error, throws, or changes the state of the
 * process (its locale, its folder, its signals). Every call that can fail returns a status and fills *error,
 * which may be null. On failure, results are null, and arrays have no defined content.
 *
 * Text is UTF-8 and ends with a zero byte; paths are written as the user's system writes them. Lengths,
 * coordinates, stations, offsets and levels are metres; coordinates are northing and easting, as in the
 * files.
 *
 * A handle is closed once, by the function for it; null may be closed. What a handle gives (names, texts)
 * stays until it is closed. Handles do not change after they are made, so any number of threads may use one
 * at once; a fork keeps them usable. */
#ifndef VELMORA_C_VELMORA_H_
#define VELMORA_C_VELMORA_H_

#include <stddef.h> /* NOLINT(modernize-deprecated-headers) */
#include <stdint.h> /* NOLINT(modernize-deprecated-headers) */

#include "velmora/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- errors */

/* The result of every call that can fail. */
typedef enum velmora_status {
  VELMORA_OK = 0,            /* done; the error is empty */
  VELMORA_BAD_ARGUMENT = 1,  /* a null pointer, a value that is not allowed, a text that is not UTF-8 */
  VELMORA_NOT_OPENED = 2,    /* there is no such file, or it cannot be opened */
  VELMORA_NOT_READ = 3,      /* the file is not what was expected, or cannot be read to its end */
  VELMORA_NOT_WRITTEN = 4,   /* the file cannot be written; it is as it was */
  VELMORA_WOULD_LOSE = 5,    /* the write would lose something of the file; see VELMORA_FORCE */
  VELMORA_NOT_FOUND = 6,     /* there is no road or key of this name */
  VELMORA_NOT_SUPPORTED = 7, /* not in this build, or not by this format */
  VELMORA_NO_MEMORY = 8,     /* memory ran out; nothing was written */
  VELMORA_FAILED = 9         /* an error of the library itself */
} velmora_status;

/* What failed: the text says what and what to do, without the file's name. Longer texts are cut. */
typedef struct velmora_error {
  int32_t status;  /* a velmora_status */
  int64_t line;    /* in the file, from 1; 0: the file as a whole, or no file */
  char text[1024]; /* UTF-8; empty after a success */
  char file[1024]; /* the path as given; empty without a file */
} velmora_error;

/* Write although something is lost, or although a program may not read the value. */
#define VELMORA_FORCE 1u
/* Locate as the suite's own programs do, see velmora_locate. */
#define VELMORA_SEARCHED 2u

/* ---- version */

/* The version of the loaded library: 10000 * major + 100 * minor + patch. */
VELMORA_API int velmora_version(void);
/* The same as text, "0.1.0"; it stays as long as the library. */
VELMORA_API const char* velmora_version_text(void);

/* ---- findings: what a check reports about a file */

/* Flag of a finding: reading skips or cuts the line, or takes it for something else. */
#define VELMORA_MISREAD 1
/* Flag of a finding: a rewrite of the file omits the line or a part of it. */
#define VELMORA_LOST 2

/* One thing that a check reports. Filled by the functions velmora_..._finding. */
typedef struct velmora_finding {
  int64_t line;     /* from 1; 0: the file as a whole */
  int32_t flags;    /* VELMORA_MISREAD, VELMORA_LOST, both or 0: the line is read and kept */
  const char* text; /* for a user, without file and line; the handle's, until it is closed */
} velmora_finding;

/* ---- roads: a plan, and a profile where there is one */

/* Handle of a road: closed by velmora_road_close. */
typedef struct velmora_road velmora_road;

/* One point of a plan. */
typedef struct velmora_plan_point {
  double northing; /* m */
  double easting;  /* m */
  double bulge;    /* tan(sweep / 4) of the segment from here to the next point: 0 a straight, above 0
                    * counter-clockwise; the last point's is not used */
  double station;  /* m */
} velmora_plan_point;

/* One point of a profile. */
typedef struct velmora_profile_point {
  double level;   /* m */
  double station; /* m */
  double bulge;   /* as in a plan, with stations to the right and levels upwards: above 0 a sag */
} velmora_profile_point;

/* How a file of another format is imported. Start from VELMORA_READ_OPTIONS_INIT; null means the same. */
typedef struct velmora_read_options {
  size_t size;               /* of this struct; later versions add to its end */
  const char* name;          /* of the alignment; null where the file has one only */
  const char* layer;         /* of the alignment, in DXF and GeoPackage; null: any */
  double fit;                /* m: by how much a later rewrite by the suite's programs may move the road */
  double spirals_as_arcs;    /* m: how far arcs may be from a spiral; 0: spirals are refused */
  double metres_per_foot;    /* 0: files in feet are refused */
  double start;              /* station of the first point, where the file has no stations */
  int32_t internal_stations; /* not 0: continuous stations where the file has station equations */
} velmora_read_options;
/* The usual options: a fit of 1 mm; spirals and feet are refused; the only alignment of the file. */
#define VELMORA_READ_OPTIONS_INIT \
  { sizeof(velmora_read_options), NULL, NULL, 0.001, 0.0, 0.0, 0.0, 0 }

/* Reads a road. The name's ending decides the format: .xml LandXML, .dxf, .gpkg GeoPackage, .csv with
 * well-known text; any other is an alignment file (.vl). VELMORA_NOT_FOUND when the file has several
 * alignments and the name is missing or is none of theirs; the text then lists the names. */
VELMORA_API velmora_status velmora_road_read(const char* path, const velmora_read_options* options,
                                             velmora_road** road, velmora_error* error);
/* A road from the content of an alignment file: `size` bytes. */
VELMORA_API velmora_status velmora_road_parse(const void* bytes, size_t size, velmora_road** road,
                                              velmora_error* error);
/* A road from points: two or more of a plan; `profile` may be null when `profile_count` is 0. Numbers must be
 * finite. A null name is an empty one. */
VELMORA_API velmora_status velmora_road_make(const char* name, const velmora_plan_point* plan,
                                             size_t plan_count, const velmora_profile_point* profile,
                                             size_t profile_count, velmora_road** road, velmora_error* error);
/* Frees a road with everything that it gave; null is allowed. */
VELMORA_API void velmora_road_close(velmora_road* road);

/* How a road is written. Start from VELMORA_WRITE_OPTIONS_INIT; null means the same. */
typedef struct velmora_write_options {
  size_t size;           /* of this struct */
  int32_t srs;           /* EPSG code of the spatial reference, in GeoPackage; 0: undefined */
  double stations_every; /* m: marks along the road, in formats other than .vl; 0: none */
  double chord_error;    /* m: of arcs that GeoPackage also gives as chords */
} velmora_write_options;
/* The usual options: no spatial reference, no marks, chords within 1 mm of their arcs. */
#define VELMORA_WRITE_OPTIONS_INIT \
  { sizeof(velmora_write_options), 0, 0.0, 0.001 }

/* Writes a file in one step: whatever happens, the old file stays whole until the new one takes its place.
 * The ending decides the format as in velmora_road_read; .vl is an alignment file with all digits of its
 * numbers, any ending but these is VELMORA_NOT_SUPPORTED. VELMORA_WOULD_LOSE, without VELMORA_FORCE, when the
 * format has no place for the profile or for letters of the name, or when the road was read from a file of
 * which reading skipped something. */
VELMORA_API velmora_status velmora_road_write(const velmora_road* road, const char* path,
                                              const velmora_write_options* options, uint32_t flags,
                                              velmora_error* error);

/* The alignment's name; "" without one and for a null road. */
VELMORA_API const char* velmora_road_name(const velmora_road* road);
/* The points of the plan: returns their number and fills in the first `room` of them. `points` may be null; a
 * null road has none. */
VELMORA_API size_t velmora_road_plan(const velmora_road* road, velmora_plan_point* points, size_t room);
/* The points of the profile, in the same way; 0 without a profile. */
VELMORA_API size_t velmora_road_profile(const velmora_road* road, velmora_profile_point* points, size_t room);

/* Measures of a plan, in metres. */
typedef struct velmora_road_measures {
  double length;          /* along straights and arcs */
  double lowest_station;  /* of all points */
  double highest_station; /* of all points */
  double smallest_radius; /* NaN without an arc */
  double min_northing;    /* the four limits include the arcs */
  double max_northing;    /* northern limit */
  double min_easting;     /* western limit */
  double max_easting;     /* eastern limit */
  int64_t arcs;           /* number of segments that are arcs */
  double import_error;    /* the largest distance from an imported file's geometry to the road; else 0 */
} velmora_road_measures;
/* Measures the plan of a road; VELMORA_BAD_ARGUMENT when one of the first two pointers is null. */
VELMORA_API velmora_status velmora_road_measure(const velmora_road* road, velmora_road_measures* measures,
                                                velmora_error* error);

/* What reading skipped or approximated, and what is unusual in the points, such as coincident ones. Returns
 * the number of findings; *finding is filled when `index` is below it. At most 30,000 are kept. */
VELMORA_API size_t velmora_road_finding(const velmora_road* road, size_t index, velmora_finding* finding);

/* The road as the bytes of an alignment file, as velmora_road_write writes it; freed by velmora_free. Flags
 * and VELMORA_WOULD_LOSE as there. */
VELMORA_API velmora_status velmora_road_text(const velmora_road* road, char** bytes, size_t* size,
                                             uint32_t flags, velmora_error* error);

/* The drawing of plan and profile on one sheet, as SVG; freed by velmora_free. */
VELMORA_API velmora_status velmora_road_svg(const velmora_road* road, char** svg, size_t* size,
                                            velmora_error* error);
/* Frees what velmora_road_text and velmora_road_svg returned; null is allowed. */
VELMORA_API void velmora_free(void* memory);

/* ---- places
 *
 * Arrays have `count` elements; a step is the distance in bytes from one element to the next, 0 meaning that
 * elements follow one another. Elements need no alignment. Output arrays must not overlap any other array.
 * `threads` is how many are used: 1 is the caller's only, 0 all processors. */

/* Where a point or a station lies. */
typedef enum velmora_place_result {
  VELMORA_ON_ROAD = 0,      /* placed */
  VELMORA_CORRECTED = 1,    /* on the road; the suite's own programs place the point elsewhere, or nowhere */
  VELMORA_BEFORE_START = 2, /* off the road at its first point */
  VELMORA_BEYOND_END = 3,   /* off the road at its last point */
  VELMORA_NOWHERE = 4       /* nothing found: not finite, or a point where the road turns back */
} velmora_place_result;

/* The result in words, as the command shows it: "on the alignment", "before its start", ... */
VELMORA_API const char* velmora_place_text(int32_t place);

/* Map points to stations and offsets: the nearest foot on a straight or an arc, else the nearest corner.
 * Offsets are positive to the right towards higher stations. Without a place, both are NaN. `place` may be
 * null. With VELMORA_SEARCHED the answers are, to the bit, those of the suite's own programs, which place
 * points otherwise beside the axes through an arc's centre, and on the other side at corners where stations
 * fall. */
VELMORA_API velmora_status velmora_locate(const velmora_road* road, size_t count, const double* northing,
                                          ptrdiff_t northing_step, const double* easting,
                                          ptrdiff_t easting_step, double* station, ptrdiff_t station_step,
                                          double* offset, ptrdiff_t offset_step, int32_t* place,
                                          ptrdiff_t place_step, uint32_t flags, int threads,
                                          velmora_error* error);

/* Stations and offsets to map points, the inverse of velmora_locate where stations follow the lengths along
 * the road. Where they do not, a station is placed by its share of those of the segment's ends, as in the
 * suite's own programs, and located by the length from the segment's start. Stations within 0.1 mm of either
 * end still count as on the road (velmora_locate takes feet to a ten-thousandth of the segment beyond it).
 * Without a place, both coordinates are NaN. */
VELMORA_API velmora_status velmora_place(const velmora_road* road, size_t count, const double* station,
                                         ptrdiff_t station_step, const double* offset, ptrdiff_t offset_step,
                                         double* northing, ptrdiff_t northing_step, double* easting,
                                         ptrdiff_t easting_step, int32_t* place, ptrdiff_t place_step,
                                         int threads, velmora_error* error);

/* The profile's levels at stations; NaN before its first point, at its last point's station and beyond, and
 * without a profile. */
VELMORA_API velmora_status velmora_level(const velmora_road* road, size_t count, const double* station,
                                         ptrdiff_t station_step, double* level, ptrdiff_t level_step,
                                         int threads, velmora_error* error);

/* ---- lists of points: text of any usual form, AGS4 (.ags), a layer of a GeoPackage ("x.gpkg" or
 * "x.gpkg:layer")
 *
 * Columns are found by their titles, as the command finds them (docs/point-lists.md); texts of errors name
 * the command's options, of which these are the fields. */

/* Handle of a list of points: closed by velmora_points_close. */
typedef struct velmora_points velmora_points;

/* How a list is read. Start from VELMORA_LIST_OPTIONS_INIT; null means the same. Delimiter, decimal sign and
 * encoding are for text only. */
typedef struct velmora_list_options {
  size_t size;          /* of this struct */
  const char* id;       /* title, or number from 1, of the points' column; null: found, here and below */
  const char* northing; /* of the northings */
  const char* easting;  /* of the eastings */
  const char* level;    /* of the levels */
  const char* encoding; /* "utf-8", "windows-1252", "utf-16le" or "utf-16be", without a mark; null: found */
  char delimiter;       /* ',', ';', tab, '|' or ':'; 0: found */
  char decimal;         /* '.' or ','; 0: either */
  char east_first;      /* not 0: northing and easting are exchanged */
} velmora_list_options;
/* The usual options: everything is found in the list itself. */
#define VELMORA_LIST_OPTIONS_INIT \
  { sizeof(velmora_list_options), NULL, NULL, NULL, NULL, NULL, 0, 0, 0 }

/* Reads a list whole. Rows that are not points are findings with their line, and are not among the points. */
VELMORA_API velmora_status velmora_points_read(const char* path, const velmora_list_options* options,
                                               velmora_points** points, velmora_error* error);
/* Frees a list with everything that it gave; null is allowed. */
VELMORA_API void velmora_points_close(velmora_points* points);
/* Returns the number of points; the arrays have so many elements, and a level that is missing is NaN. Any
 * pointer may be null. */
VELMORA_API size_t velmora_points_arrays(const velmora_points* points, const double** northing,
                                         const double** easting, const double** level, const int64_t** line);
/* The id of a point, from 0; "" without one. */
VELMORA_API const char* velmora_points_id(const velmora_points* points, size_t point);
/* Returns the number of the list's other columns; *title is filled with that of one of them, from 0. */
VELMORA_API size_t velmora_points_column(const velmora_points* points, size_t column, const char** title);
/* What a point, from 0, has in one of them; "" where it has nothing. */
VELMORA_API const char* velmora_points_field(const velmora_points* points, size_t point, size_t column);
/* What was found in a list, as velmora_road_finding; ids that come twice are among the findings. */
VELMORA_API size_t velmora_points_finding(const velmora_points* points, size_t index,
                                          velmora_finding* finding);

/* ---- settings: the parameter files TUNDRIL.CFG, TUNDRIL.PAR, KARSK.PAR and JB23.PAR
 *
 * The file's name, without regard to letter case, says which one it is and what is built in; any other name
 * is a file of "key=value" without defaults. */

/* Handle of a settings file: closed by velmora_settings_close. */
typedef struct velmora_settings velmora_settings;

/* One setting; its texts stay until the handle is closed. */
typedef struct velmora_setting {
  const char* key;      /* as it is built in, else as the file spells it */
  const char* value;    /* the file's, else the built-in one */
  const char* built_in; /* null when the key has none */
  int32_t stored;       /* 1 when the file has it, with a value */
} velmora_setting;

/* Reads a settings file; the built-in values alone when there is none and `may_be_missing` is not 0. */
VELMORA_API velmora_status velmora_settings_read(const char* path, int may_be_missing,
                                                 velmora_settings** settings, velmora_error* error);
/* Frees the settings; null is allowed. */
VELMORA_API void velmora_settings_close(velmora_settings* settings);
/* Returns the number of settings: those with a default in their usual order, then the file's others; *setting
 * is filled when `index` is below it. */
VELMORA_API size_t velmora_settings_at(const velmora_settings* settings, size_t index,
                                       velmora_setting* setting);
/* Fills in the setting of a key, without regard to letter case. VELMORA_NOT_FOUND when the file has no such
 * key and none is built in. */
VELMORA_API velmora_status velmora_settings_find(const velmora_settings* settings, const char* key,
                                                 velmora_setting* setting, velmora_error* error);
/* What was found in the file, as velmora_road_finding. */
VELMORA_API size_t velmora_settings_finding(const velmora_settings* settings, size_t index,
                                            velmora_finding* finding);
/* Writes one value to the file, which is made if it is missing; an empty value removes the key. A handle read
 * before does not change. VELMORA_BAD_ARGUMENT for what would not be read back, and, without VELMORA_FORCE,
 * for what is not a number where programs need one; VELMORA_WOULD_LOSE, without it, when something else of
 * the file is lost. */
VELMORA_API velmora_status velmora_setting_write(const char* path, const char* key, const char* value,
                                                 uint32_t flags, velmora_error* error);

/* ---- code files: KODFIL.DAT, MILJKOD.DAT, LINKOD.PAR and title blocks, by name as for settings */

/* Handle of a code file: closed by velmora_codes_close. */
typedef struct velmora_codes velmora_codes;

/* The most fields that an entry has. */
#define VELMORA_CODE_FIELDS 4

/* One entry of a code file. What velmora_codes_at fills in stays until the handle is closed. */
typedef struct velmora_code {
  int64_t line;    /* in the file, from 1; not used when writing */
  int32_t section; /* of MILJKOD.DAT from 1; of KODFIL.DAT how many lines "*" precede it after the header's */
  const char* code; /* the entry's first word */
  /* KODFIL.DAT: text. MILJKOD.DAT: text, max, step. LINKOD.PAR: word, number, value, text. Title block: word,
   * number, number, number. The others are null. */
  const char* fields[VELMORA_CODE_FIELDS];
} velmora_code;

/* Reads a code file, which must exist. VELMORA_BAD_ARGUMENT for the name of a settings file. */
VELMORA_API velmora_status velmora_codes_read(const char* path, velmora_codes** codes, velmora_error* error);
/* Frees the codes; null is allowed. */
VELMORA_API void velmora_codes_close(velmora_codes* codes);
/* Returns the number of entries; *code is filled when `index` is below it. */
VELMORA_API size_t velmora_codes_at(const velmora_codes* codes, size_t index, velmora_code* code);
/* What was found in the file, as velmora_road_finding. */
VELMORA_API size_t velmora_codes_finding(const velmora_codes* codes, size_t index, velmora_finding* finding);
/* Replaces the entries of an existing file; the header of KODFIL.DAT is kept. VELMORA_BAD_ARGUMENT for an
 * entry that would not be read back, with its number in the text; VELMORA_WOULD_LOSE as for settings. */
VELMORA_API velmora_status velmora_codes_write(const char* path, const velmora_code* codes, size_t count,
                                               uint32_t flags, velmora_error* error);

/* ---- projects */

/* Handle of a project's paths: closed by velmora_project_close. */
typedef struct velmora_project velmora_project;

/* One path of a project; its texts stay until the handle is closed. */
typedef struct velmora_project_path {
  const char* name; /* the library's own: "m_DbfKat", ... */
  const char* path; /* whether there is such a file or folder or not */
} velmora_project_path;

/* The paths in an existing project folder. */
VELMORA_API velmora_status velmora_project_open(const char* folder, velmora_project** project,
                                                velmora_error* error);
/* Frees the paths; null is allowed. */
VELMORA_API void velmora_project_close(velmora_project* project);
/* Returns the number of paths; *path is filled when `index` is below it. */
VELMORA_API size_t velmora_project_path_at(const velmora_project* project, size_t index,
                                           velmora_project_path* path);

#ifdef __cplusplus
}
#endif

#endif /* VELMORA_C_VELMORA_H_ */
