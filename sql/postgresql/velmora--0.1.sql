\echo Use "CREATE EXTENSION velmora" to load this file. \quit

-- Each function for roads as text and as bytea. A native point is (easting, northing).
DO $$
DECLARE
  road text;
  f text[];
BEGIN
  FOREACH road IN ARRAY ARRAY['text', 'bytea'] LOOP
    FOREACH f SLICE 1 IN ARRAY ARRAY[
      ['velmora_station', ', northing float8, easting float8', 'float8', 'velmora_sql_station'],
      ['velmora_station', ', at point', 'float8', 'velmora_sql_station'],
      ['velmora_offset', ', northing float8, easting float8', 'float8', 'velmora_sql_offset'],
      ['velmora_offset', ', at point', 'float8', 'velmora_sql_offset'],
      ['velmora_level', ', northing float8, easting float8', 'float8', 'velmora_sql_level'],
      ['velmora_level', ', at point', 'float8', 'velmora_sql_level'],
      ['velmora_level', ', station float8', 'float8', 'velmora_sql_level_at'],
      ['velmora_locate', ', northing float8, easting float8,'
       ' OUT station float8, OUT "offset" float8, OUT level float8, OUT status text', 'record', 'velmora_sql_locate'],
      ['velmora_locate', ', at point,'
       ' OUT station float8, OUT "offset" float8, OUT level float8, OUT status text', 'record', 'velmora_sql_locate'],
      ['velmora_northing', ', station float8, "offset" float8', 'float8', 'velmora_sql_northing'],
      ['velmora_easting', ', station float8, "offset" float8', 'float8', 'velmora_sql_easting'],
      ['velmora_place', ', station float8, "offset" float8', 'point', 'velmora_sql_place'],
      ['velmora_findings', '', 'text', 'velmora_sql_findings']
    ] LOOP
      EXECUTE format('CREATE FUNCTION %s(road %s%s) RETURNS %s AS %L, %L LANGUAGE C IMMUTABLE STRICT PARALLEL SAFE COST 20',
                     f[1], road, f[2], f[3], 'MODULE_PATHNAME', f[4]);
    END LOOP;
  END LOOP;
END
$$;
