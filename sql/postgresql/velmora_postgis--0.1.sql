\echo Use "CREATE EXTENSION velmora_postgis" to load this file. \quit

-- Bodies use each argument once, and velmora_locate returns a set and is not strict: so the planner replaces calls
-- by their bodies, and a query parses each road once.
DO $$
DECLARE
  road text;
  name text;
BEGIN
  FOREACH road IN ARRAY ARRAY['text', 'bytea'] LOOP
    FOREACH name IN ARRAY ARRAY['velmora_station', 'velmora_offset', 'velmora_level'] LOOP
      EXECUTE format('CREATE FUNCTION %s(road %s, at geometry) RETURNS float8 LANGUAGE SQL IMMUTABLE STRICT PARALLEL SAFE'
                     ' RETURN %1$s(road, at::point)', name, road);
    END LOOP;
    EXECUTE format('CREATE FUNCTION velmora_locate(road %s, at geometry)'
                   ' RETURNS TABLE (station float8, "offset" float8, level float8, status text)'
                   ' LANGUAGE SQL IMMUTABLE PARALLEL SAFE ROWS 1'
                   ' BEGIN ATOMIC SELECT * FROM velmora_locate(road, at::point); END', road);
    EXECUTE format('CREATE FUNCTION velmora_place(road %s, station float8, "offset" float8, srid integer)'
                   ' RETURNS geometry LANGUAGE SQL IMMUTABLE STRICT PARALLEL SAFE'
                   ' RETURN ST_SetSRID(velmora_place(road, station, "offset")::geometry, srid)', road);
  END LOOP;
END
$$;
