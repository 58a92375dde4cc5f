-- starts from chart_data.sql
SELECT 1;
