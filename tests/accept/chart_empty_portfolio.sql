-- starts from chart_data.sql
DELETE FROM DailyTracker;
DELETE FROM PriceHistory;
