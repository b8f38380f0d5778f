/* The functions of the extension "velmora". Their names begin with velmora_sql_, as those without "sql" are
 * the library's own. */
#include "postgres.h"

#include <math.h>

#include "access/htup_details.h"
#include "fmgr.h"
#include "funcapi.h"
#include "lib/stringinfo.h"
#include "mb/pg_wchar.h"
#include "nodes/primnodes.h"
#include "utils/builtins.h"
#include "utils/geo_decls.h"
#include "velmora/c/velmora.h"

PG_MODULE_MAGIC;

/* ---- roads */

#define KEPT_ROADS 8

typedef struct KeptRoad {
  struct varlena* key; /* the argument as given, be it a pointer to where a large value is stored */
  velmora_road* road;
} KeptRoad;

/* What a call in a query keeps from row to row. */
typedef struct CallSite {
  KeptRoad roads[KEPT_ROADS];
  int next;         /* to be replaced */
  bool is_constant; /* the road is the same for all rows */
  TupleDesc row;    /* of velmora_locate */
  MemoryContextCallback at_end;
} CallSite;

static void CloseRoads(void* kept) {
  CallSite* const site = kept;
  for (int i = 0; i < KEPT_ROADS; ++i) velmora_road_close(site->roads[i].road);
}

static CallSite* CallSiteOf(FunctionCallInfo fcinfo) {
  FmgrInfo* const function = fcinfo->flinfo;
  if (function->fn_extra == NULL) {
    CallSite* const site = MemoryContextAllocZero(function->fn_mcxt, sizeof(CallSite));
    const Node* const call = function->fn_expr;
    if (call != NULL && IsA(call, FuncExpr))
      site->is_constant = IsA(linitial(((FuncExpr*)call)->args), Const);
    site->at_end.func = CloseRoads;
    site->at_end.arg = site;
    MemoryContextRegisterResetCallback(function->fn_mcxt, &site->at_end);
    function->fn_extra = site;
  }
  return function->fn_extra;
}

static void Check(velmora_status status, const velmora_error* error) {
  if (status == VELMORA_OK) return;
  const int code = status == VELMORA_NO_MEMORY  ? ERRCODE_OUT_OF_MEMORY
                   : status == VELMORA_NOT_READ ? ERRCODE_INVALID_TEXT_REPRESENTATION
                                                : ERRCODE_INTERNAL_ERROR;
  const char* const text = pg_any_to_server(error->text, (int)strlen(error->text), PG_UTF8);
  if (error->line > 0)
    ereport(ERROR, errcode(code), errmsg("road: line %lld: %s", (long long)error->line, text));
  ereport(ERROR, errcode(code), errmsg("road: %s", text));
}

/* The road in the first argument, which a query parses once while it has no more than KEPT_ROADS. */
static const velmora_road* RoadOf(FunctionCallInfo fcinfo) {
  CallSite* const site = CallSiteOf(fcinfo);
  if (site->is_constant && site->roads[0].road != NULL) return site->roads[0].road;
  struct varlena* given = (struct varlena*)PG_GETARG_POINTER(0);
  /* A pointer to memory says nothing about what is there in the next call. */
  if (VARATT_IS_EXTERNAL(given) && !VARATT_IS_EXTERNAL_ONDISK(given)) given = pg_detoast_datum(given);
  const Size size = VARSIZE_ANY(given);
  for (int i = 0; i < KEPT_ROADS && site->roads[i].road != NULL; ++i)
    if (VARSIZE_ANY(site->roads[i].key) == size && memcmp(site->roads[i].key, given, size) == 0)
      return site->roads[i].road;

  struct varlena* const content = pg_detoast_datum_packed(given);
  struct varlena* const key = MemoryContextAlloc(fcinfo->flinfo->fn_mcxt, size);
  memcpy(key, given, size);
  velmora_road* road;
  velmora_error error;
  Check(velmora_road_parse(VARDATA_ANY(content), VARSIZE_ANY_EXHDR(content), &road, &error), &error);
  KeptRoad* const kept = &site->roads[site->next];
  velmora_road_close(kept->road);
  if (kept->key != NULL) pfree(kept->key);
  kept->key = key;
  kept->road = road;
  site->next = (site->next + 1) % KEPT_ROADS;
  return road;
}

/* ---- places */

typedef struct Place {
  double station, offset;
  int32_t result;
} Place;

/* Of the arguments after the road: northing and easting, or a point. */
static Place Locate(FunctionCallInfo fcinfo, const velmora_road* road) {
  double northing, easting;
  if (PG_NARGS() == 2) {
    const Point* const point = PG_GETARG_POINT_P(1);
    northing = point->y;
    easting = point->x;
  } else {
    northing = PG_GETARG_FLOAT8(1);
    easting = PG_GETARG_FLOAT8(2);
  }
  Place place;
  velmora_error error;
  Check(velmora_locate(road, 1, &northing, 0, &easting, 0, &place.station, 0, &place.offset, 0, &place.result,
                       0, 0, 1, &error),
        &error);
  return place;
}

static double LevelAt(const velmora_road* road, double station) {
  double level;
  velmora_error error;
  Check(velmora_level(road, 1, &station, 0, &level, 0, 1, &error), &error);
  return level;
}

static Point PointAt(FunctionCallInfo fcinfo) {
  const double station = PG_GETARG_FLOAT8(1);
  const double offset = PG_GETARG_FLOAT8(2);
  Point point;
  int32_t result;
  velmora_error error;
  Check(velmora_place(RoadOf(fcinfo), 1, &station, 0, &offset, 0, &point.y, 0, &point.x, 0, &result, 0, 1,
                      &error),
        &error);
  return point;
}

#define RETURN_NUMBER(number)            \
  do {                                   \
    const double value_ = (number);      \
    if (isnan(value_)) PG_RETURN_NULL(); \
    PG_RETURN_FLOAT8(value_);            \
  } while (0)

/* ---- functions */

PG_FUNCTION_INFO_V1(velmora_sql_station);
Datum velmora_sql_station(PG_FUNCTION_ARGS) { RETURN_NUMBER(Locate(fcinfo, RoadOf(fcinfo)).station); }

PG_FUNCTION_INFO_V1(velmora_sql_offset);
Datum velmora_sql_offset(PG_FUNCTION_ARGS) { RETURN_NUMBER(Locate(fcinfo, RoadOf(fcinfo)).offset); }

PG_FUNCTION_INFO_V1(velmora_sql_level);
Datum velmora_sql_level(PG_FUNCTION_ARGS) {
  const velmora_road* const road = RoadOf(fcinfo);
  RETURN_NUMBER(LevelAt(road, Locate(fcinfo, road).station));
}

PG_FUNCTION_INFO_V1(velmora_sql_level_at);
Datum velmora_sql_level_at(PG_FUNCTION_ARGS) { RETURN_NUMBER(LevelAt(RoadOf(fcinfo), PG_GETARG_FLOAT8(1))); }

PG_FUNCTION_INFO_V1(velmora_sql_northing);
Datum velmora_sql_northing(PG_FUNCTION_ARGS) { RETURN_NUMBER(PointAt(fcinfo).y); }

PG_FUNCTION_INFO_V1(velmora_sql_easting);
Datum velmora_sql_easting(PG_FUNCTION_ARGS) { RETURN_NUMBER(PointAt(fcinfo).x); }

PG_FUNCTION_INFO_V1(velmora_sql_place);
Datum velmora_sql_place(PG_FUNCTION_ARGS) {
  Point* const point = palloc(sizeof(Point));
  *point = PointAt(fcinfo);
  if (isnan(point->x)) PG_RETURN_NULL();
  PG_RETURN_POINT_P(point);
}

PG_FUNCTION_INFO_V1(velmora_sql_locate);
Datum velmora_sql_locate(PG_FUNCTION_ARGS) {
  CallSite* const site = CallSiteOf(fcinfo);
  if (site->row == NULL) {
    TupleDesc row;
    if (get_call_result_type(fcinfo, NULL, &row) != TYPEFUNC_COMPOSITE)
      elog(ERROR, "velmora_locate returns a row");
    const MemoryContext before = MemoryContextSwitchTo(fcinfo->flinfo->fn_mcxt);
    site->row = BlessTupleDesc(CreateTupleDescCopy(row));
    MemoryContextSwitchTo(before);
  }
  const velmora_road* const road = RoadOf(fcinfo);
  const Place place = Locate(fcinfo, road);
  const double level = LevelAt(road, place.station);
  Datum values[4] = {Float8GetDatum(place.station), Float8GetDatum(place.offset), Float8GetDatum(level),
                     CStringGetTextDatum(velmora_place_text(place.result))};
  bool nulls[4] = {isnan(place.station), isnan(place.offset), isnan(level), false};
  PG_RETURN_DATUM(HeapTupleGetDatum(heap_form_tuple(site->row, values, nulls)));
}

/* A line for each of the first hundred findings; null without any. */
PG_FUNCTION_INFO_V1(velmora_sql_findings);
Datum velmora_sql_findings(PG_FUNCTION_ARGS) {
  const velmora_road* const road = RoadOf(fcinfo);
  StringInfoData text;
  velmora_finding finding;
  initStringInfo(&text);
  for (size_t i = 0; i < 100 && i < velmora_road_finding(road, i, &finding); ++i) {
    if (i > 0) appendStringInfoChar(&text, '\n');
    if (finding.line > 0) appendStringInfo(&text, "line %lld: ", (long long)finding.line);
    appendStringInfoString(&text, pg_any_to_server(finding.text, (int)strlen(finding.text), PG_UTF8));
  }
  if (text.len == 0) PG_RETURN_NULL();
  PG_RETURN_TEXT_P(cstring_to_text_with_len(text.data, text.len));
}
