/* A client in C: every call of the interface, on both systems. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "velmora/c/velmora.h"

static int failures = 0;
static velmora_error error;

#define CHECK(condition)                                                                                   \
  do {                                                                                                     \
    if (!(condition)) {                                                                                    \
      ++failures;                                                                                          \
      printf("%s:%d: %s (%d %s:%lld %s)\n", __FILE__, __LINE__, #condition, (int)error.status, error.file, \
             (long long)error.line, error.text);                                                           \
    }                                                                                                      \
  } while (0)

static const char* In(const char* folder, const char* name) {
  static char paths[4][1024];
  static int next = 0;
  char* path = paths[next++ % 4];
  snprintf(path, sizeof paths[0], "%s/%s", folder, name);
  return path;
}

static void Write(const char* path, const char* text) {
  FILE* file = fopen(path, "wb");
  if (file == NULL || fwrite(text, 1, strlen(text), file) != strlen(text) || fclose(file) != 0) {
    printf("cannot write %s\n", path);
    exit(1);
  }
}

/* Locate and place are each other's inverse, to the same bits in one thread, in several, and in columns of a
 * table. */
static void CheckPlaces(const velmora_road* road) {
  enum { kPoints = 20000 };
  typedef struct {
    char id[3];
    double northing, easting, station, offset;
  } Row;
  static double n[kPoints], e[kPoints], s[kPoints], o[kPoints], s2[kPoints], o2[kPoints], z[kPoints];
  static int32_t place[kPoints];
  static Row rows[kPoints];
  velmora_road_measures m;
  CHECK(velmora_road_measure(road, &m, &error) == VELMORA_OK);
  for (int i = 0; i < kPoints; ++i) {
    s[i] = m.lowest_station + (m.highest_station - m.lowest_station) * i / (kPoints - 1);
    o[i] = i % 41 - 20;
  }
  CHECK(velmora_place(road, kPoints, s, 0, o, 0, n, 0, e, 0, place, 0, 0, &error) == VELMORA_OK);
  for (int i = 0; i < kPoints; ++i) {
    rows[i].northing = n[i];
    rows[i].easting = e[i];
  }
  CHECK(velmora_locate(road, kPoints, n, 0, e, 0, s2, 0, o2, 0, place, 0, 0, 1, &error) == VELMORA_OK);
  int found = 0;
  for (int i = 0; i < kPoints; ++i)
    found += place[i] <= VELMORA_CORRECTED && fabs(s2[i] - s[i]) < 1e-3 && fabs(o2[i] - o[i]) < 1e-3;
  CHECK(found > kPoints * 97 / 100); /* beside corners two stations have the same points */
  CHECK(velmora_locate(road, kPoints, &rows[0].northing, sizeof(Row), &rows[0].easting, sizeof(Row),
                       &rows[0].station, sizeof(Row), &rows[0].offset, sizeof(Row), NULL, 0, 0, 3,
                       &error) == VELMORA_OK);
  for (int i = 0; i < kPoints; ++i) {
    s[i] = rows[i].station;
    o[i] = rows[i].offset;
  }
  CHECK(memcmp(s, s2, sizeof s) == 0 && memcmp(o, o2, sizeof o) == 0);
  CHECK(velmora_level(road, kPoints, s, 0, z, 0, 2, &error) == VELMORA_OK);
  CHECK(velmora_road_profile(road, NULL, 0) == 0 ? isnan(z[1]) : !isnan(z[kPoints / 2]));
  CHECK(strcmp(velmora_place_text(VELMORA_BEFORE_START), "before its start") == 0);
  n[0] = NAN;
  CHECK(velmora_locate(road, 1, n, 0, e, 0, s, 0, o, 0, place, 0, 0, 1, &error) == VELMORA_OK);
  CHECK(place[0] == VELMORA_NOWHERE && isnan(s[0]) && isnan(o[0]));
  CHECK(velmora_locate(road, 1, n, 0, e, 0, NULL, 0, o, 0, NULL, 0, 0, 1, &error) == VELMORA_BAD_ARGUMENT);
  CHECK(velmora_locate(road, 1, n, 0, e, 0, s, 0, o, 0, NULL, 0, 64, 1, &error) == VELMORA_BAD_ARGUMENT);
  CHECK(velmora_locate(NULL, 1, n, 0, e, 0, s, 0, o, 0, NULL, 0, 0, 1, NULL) == VELMORA_BAD_ARGUMENT);
  CHECK(velmora_locate(road, 0, NULL, 0, NULL, 0, NULL, 0, NULL, 0, NULL, 0, 0, 0, &error) == VELMORA_OK);
}

static void CheckFormats(const velmora_road* road, const char* folder) {
  velmora_plan_point before[64], after[64];
  const size_t points = velmora_road_plan(road, before, 64);
  const char* const endings[] = {"vl", "xml", "csv", "dxf"};
  for (size_t i = 0; i < sizeof endings / sizeof endings[0]; ++i) {
    char name[16];
    snprintf(name, sizeof name, "out.%s", endings[i]);
    const char* path = In(folder, name);
    if (velmora_road_write(road, path, NULL, 0, &error) == VELMORA_WOULD_LOSE) {
      CHECK(strcmp(endings[i], "dxf") == 0 && velmora_road_profile(road, NULL, 0) > 0);
      CHECK(velmora_road_write(road, path, NULL, VELMORA_FORCE, &error) == VELMORA_OK);
    }
    velmora_road* read;
    CHECK(velmora_road_read(path, NULL, &read, &error) == VELMORA_OK);
    CHECK(velmora_road_plan(read, after, 64) == points);
    for (size_t j = 0; j < points; ++j)
      CHECK(fabs(before[j].northing - after[j].northing) < 1e-8 &&
            fabs(before[j].station - after[j].station) < 1e-8);
    CHECK(strcmp(velmora_road_name(read), velmora_road_name(road)) == 0);
    velmora_road_close(read);
  }
  CHECK(velmora_road_write(road, In(folder, "out.shp"), NULL, 0, &error) == VELMORA_NOT_SUPPORTED);
  CHECK(velmora_road_write(road, In(folder, "none/out.vl"), NULL, 0, &error) == VELMORA_NOT_WRITTEN);
  velmora_road* none;
  CHECK(velmora_road_read(In(folder, "none.xml"), NULL, &none, &error) == VELMORA_NOT_OPENED && none == NULL);
  CHECK(strstr(error.file, "none.xml") != NULL && strstr(error.text, "no such file") != NULL);
  Write(In(folder, "bad.xml"), "<LandXML>\n<Alignments>\n</LandXML>");
  CHECK(velmora_road_read(In(folder, "bad.xml"), NULL, &none, &error) == VELMORA_NOT_READ && error.line == 3);
}

static void CheckRoads(const char* examples, const char* folder) {
  velmora_road* road;
  CHECK(velmora_road_read(In(examples, "road.vl"), NULL, &road, &error) == VELMORA_OK);
  CHECK(strcmp(velmora_road_name(road), "V\xC3\xA4g 943 Norrsj\xC3\xB6") == 0);
  CheckPlaces(road);
  CheckFormats(road, folder);
  char *svg, *bytes;
  size_t size;
  velmora_road* again;
  CHECK(velmora_road_text(road, &bytes, &size, 0, &error) == VELMORA_OK);
  CHECK(velmora_road_parse(bytes, size, &again, &error) == VELMORA_OK);
  CHECK(velmora_road_plan(again, NULL, 0) == velmora_road_plan(road, NULL, 0));
  velmora_road_close(again);
  velmora_free(bytes);
  CHECK(velmora_road_svg(road, &svg, &size, &error) == VELMORA_OK && strlen(svg) == size);
  CHECK(strncmp(svg, "<?xml", 5) == 0 || strncmp(svg, "<svg", 4) == 0);
  velmora_free(svg);
  velmora_road_close(road);

  CHECK(velmora_road_read(In(examples, "road-falling.vl"), NULL, &road, &error) == VELMORA_OK);
  CheckPlaces(road);
  CHECK(velmora_road_finding(road, 0, NULL) > 0);
  velmora_road_close(road);

  const char text[] = "0 0 0 0 1 $bytes\r\nnot a point\r\n0 100 0 100\r\n";
  velmora_finding finding;
  CHECK(velmora_road_parse(text, strlen(text), &road, &error) == VELMORA_OK);
  CHECK(velmora_road_finding(road, 0, &finding) == 1 && finding.line == 2 && (finding.flags & VELMORA_LOST));
  CHECK(velmora_road_write(road, In(folder, "lost.vl"), NULL, 0, &error) == VELMORA_WOULD_LOSE);
  velmora_road_close(road);
  CHECK(velmora_road_parse("x", 1, &road, &error) == VELMORA_NOT_READ && road == NULL);

  /* Three quarters of a circle of radius 100 around (0, 0), counter-clockwise from the east. */
  const velmora_plan_point arc[] = {{0, 100, 2.414213562373095, 0}, {-100, 0, 0, 471.238898038469}};
  CHECK(velmora_road_make("arc", arc, 2, NULL, 0, &road, &error) == VELMORA_OK);
  CheckPlaces(road);
  velmora_road_close(road);
  CHECK(velmora_road_make(NULL, arc, 1, NULL, 0, &road, &error) == VELMORA_BAD_ARGUMENT);
  velmora_road_close(NULL);
}

static void CheckSettings(const char* folder) {
  velmora_settings* settings;
  velmora_setting setting;
  const char* path = In(folder, "TUNDRIL.PAR");
  remove(path);
  CHECK(velmora_settings_read(path, 0, &settings, &error) == VELMORA_NOT_OPENED);
  CHECK(velmora_settings_read(path, 1, &settings, &error) == VELMORA_OK);
  CHECK(velmora_settings_find(settings, "hskala", &setting, &error) == VELMORA_OK && !setting.stored);
  CHECK(velmora_settings_find(settings, "OKAND", &setting, &error) == VELMORA_NOT_FOUND);
  velmora_settings_close(settings);
  CHECK(velmora_setting_write(path, "HSKALA", "hej", 0, &error) == VELMORA_BAD_ARGUMENT);
  CHECK(velmora_setting_write(path, "HSKALA", "250", 0, &error) == VELMORA_OK);
  CHECK(velmora_settings_read(path, 0, &settings, &error) == VELMORA_OK);
  CHECK(velmora_settings_find(settings, "HSKALA", &setting, &error) == VELMORA_OK && setting.stored);
  CHECK(strcmp(setting.value, "250") == 0);
  CHECK(velmora_settings_at(settings, 0, &setting) > 10 && setting.built_in != NULL);
  velmora_settings_close(settings);
  Write(path, "HSKALA=100\r\nlost line\r\n");
  CHECK(velmora_setting_write(path, "LSKALA", "250", 0, &error) == VELMORA_WOULD_LOSE && error.line == 2);
  CHECK(velmora_setting_write(path, "LSKALA", "250", VELMORA_FORCE, &error) == VELMORA_OK);
}

static void CheckCodes(const char* folder) {
  velmora_codes* codes;
  velmora_code code;
  const char* path = In(folder, "LINKOD.PAR");
  Write(path, "AB word 7 8                                      first\r\n");
  CHECK(velmora_codes_read(path, &codes, &error) == VELMORA_OK);
  CHECK(velmora_codes_at(codes, 0, &code) == 1 && strcmp(code.code, "AB") == 0);
  CHECK(strcmp(code.fields[1], "7") == 0 && strcmp(code.fields[3], "first") == 0);
  const velmora_code two[] = {code, {0, 0, "CD", {"w", "1", "2", "\xC3\xA5"}}};
  CHECK(velmora_codes_write(path, two, 2, 0, &error) == VELMORA_OK);
  velmora_codes_close(codes);
  CHECK(velmora_codes_read(path, &codes, &error) == VELMORA_OK);
  CHECK(velmora_codes_at(codes, 1, &code) == 2 && strcmp(code.fields[3], "\xC3\xA5") == 0);
  CHECK(velmora_codes_finding(codes, 0, NULL) == 0);
  velmora_codes_close(codes);
  const velmora_code bad = {0, 0, "C D", {"w", "1", "2", ""}};
  CHECK(velmora_codes_write(path, &bad, 1, 0, &error) == VELMORA_BAD_ARGUMENT);
}

static void CheckPoints(const char* examples, const char* folder) {
  velmora_points* points;
  const double *northing, *easting, *level;
  const int64_t* line;
  const char* title = "";
  velmora_finding finding;
  CHECK(velmora_points_read(In(examples, "borings.csv"), NULL, &points, &error) == VELMORA_OK);
  CHECK(velmora_points_arrays(points, &northing, &easting, &level, &line) == 22);
  CHECK(strcmp(velmora_points_id(points, 1), "24V002") == 0 && northing[1] == 6652245.816);
  CHECK(velmora_points_finding(points, 0, &finding) == 1 && (finding.flags & VELMORA_MISREAD) &&
        finding.line > 0);
  velmora_points_close(points);
  const char* path = In(folder, "list.csv");
  Write(path, "Nr;Y;X;Djup\nA;2,5;1,5;7\nA;4;3;\n");
  velmora_list_options options = VELMORA_LIST_OPTIONS_INIT;
  options.id = "Nr";
  options.decimal = ',';
  CHECK(velmora_points_read(path, &options, &points, &error) == VELMORA_OK);
  CHECK(velmora_points_arrays(points, &northing, &easting, &level, NULL) == 2);
  CHECK(northing[0] == 1.5 && easting[0] == 2.5 && isnan(level[0]));
  CHECK(velmora_points_column(points, 0, &title) == 1 && strcmp(title, "Djup") == 0);
  CHECK(strcmp(velmora_points_field(points, 0, 0), "7") == 0 && *velmora_points_field(points, 9, 9) == '\0');
  velmora_points_close(points);
  options.northing = "none";
  CHECK(velmora_points_read(path, &options, &points, &error) == VELMORA_NOT_READ && error.line == 1);
  CHECK(velmora_points_read(In(folder, "none.csv"), NULL, &points, &error) == VELMORA_NOT_OPENED);
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  CHECK(strcmp(velmora_version_text(), "") != 0 && velmora_version() > 0);
  CheckRoads(argv[1], argv[2]);
  CheckPoints(argv[1], argv[2]);
  CheckSettings(argv[2]);
  CheckCodes(argv[2]);
  velmora_project* project;
  velmora_project_path path;
  CHECK(velmora_project_open(argv[2], &project, &error) == VELMORA_OK);
  CHECK(velmora_project_path_at(project, 0, &path) > 10 && strcmp(path.name, "m_ProjKat") == 0);
  velmora_project_close(project);
  /* A file of the current folder, by its name alone. */
  remove("JB23.PAR");
  CHECK(velmora_setting_write("JB23.PAR", "SJUNKSKALA", "77", 0, &error) == VELMORA_OK);
  velmora_settings* rig;
  velmora_setting scale;
  CHECK(velmora_settings_read("JB23.PAR", 0, &rig, &error) == VELMORA_OK);
  CHECK(velmora_settings_find(rig, "SJUNKSKALA", &scale, &error) == VELMORA_OK &&
        strcmp(scale.value, "77") == 0);
  velmora_settings_close(rig);
  CHECK(velmora_project_open(In(argv[2], "none"), &project, &error) == VELMORA_NOT_OPENED);
  printf("%d failures\n", failures);
  return failures > 0;
}
