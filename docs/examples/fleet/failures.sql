-- Which machines failed, and on what. In the folder of the results:
--
--   sqlite3 -box :memory: < failures.sql
--
-- The words are those of the cases in JUnit's XML: 'run', the name of a check, 'settings'.
WITH
  documents AS MATERIALIZED (
    SELECT value AS machine, CAST(readfile(value || '.json') AS TEXT) AS document
    FROM json_each(CAST(readfile('machines.json') AS TEXT))
  ),
  tests AS MATERIALIZED (
    SELECT machine, document -> '$.result' AS result, document ->> '$.exitCode' AS exitCode,
           document ->> '$.error.message' AS error
    FROM documents WHERE json_valid(document)
  )
SELECT machine, 'run' AS what, 'There is no document.' AS reason
FROM documents WHERE json_valid(document) IS NOT TRUE
UNION ALL
SELECT machine, iif(exitCode = 6, 'settings', 'run'), error
FROM tests WHERE error IS NOT NULL
UNION ALL
SELECT machine, 'run', result ->> 'reason'
FROM tests WHERE result ->> 'verdict' = 'failed'
UNION ALL
SELECT machine, value ->> 'name', value ->> 'sentence'
FROM tests JOIN json_each(result, '$.checks') WHERE value ->> 'result' = 'fail'
ORDER BY machine;
