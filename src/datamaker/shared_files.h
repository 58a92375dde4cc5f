#pragma once

/// The rows of the delivered shared files. Each function works on a file that has its tables.

#include "datamaker/sample_plan.h"

#include <QStringList>

/// The names in data/asset_classes.txt, one a line.
QStringList ReadAssetClasses(const QString &path);
/// "AssetClass" rows of an ApplControl file, dated `today`.
void AddAssetClasses(const QString &applControlPath, const QStringList &classes, QDate today);
/// The securities of the sample and their allocation, which must be among `classes`.
void AddSampleSecurities(const QString &applControlPath, const SamplePlan &plan,
                         const QStringList &classes);

/// The rows of data/quote_sites.json; throws RuntimeError for anything but sound rows.
void AddQuoteSites(const QString &webSitesPath, const QString &jsonPath);
/// DelayTime of the site; throws RuntimeError when there is none of the name.
int DelayTimeOf(const QString &webSitesPath, const QString &siteName);

/// Two years of daily prices up to the weekday before `today`, as a download on its morning would
/// have brought them.
void AddPracticePrices(const QString &histPricesPath, const SamplePlan &plan, QDate today);
