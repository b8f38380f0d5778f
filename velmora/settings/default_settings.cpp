#include "velmora/settings/default_settings.h"

#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr DefaultSetting kTundril[] = {
    {L"HSKALA", L"100"},        {L"LSKALA", L"100"},       {L"BREDDLSP", L"1.0"},
    {L"VIMSKALA", L"50"},       {L"SLBSKALA", L"50"},      {L"HFASKALA", L"200"},
    {L"JBSKALA", L"100"},       {L"TRSKALA", L"14"},       {L"TRSTEG", L"2"},
    {L"SHOWDZ", L"JA"},         {L"TAUSKALA", L"40"},      {L"TAUSTEG", L"10"},
    {L"SENSSKALA", L"80"},      {L"SENSSTEG", L"20"},      {L"VASKALA", L"80"},
    {L"VASTEG", L"20"},         {L"DENSSKALA", L"2.0"},    {L"DENSSTEG", L"0.5"},
    {L"SGFLAB", L"NEJ"},        {L"IDHOJD", L"3.5"},       {L"METHOJD", L"2.5"},
    {L"PROVHOJD", L"1.8"},      {L"SKALHOJD", L"2.5"},     {L"PLHOJDID", L"3.0"},
    {L"PLHOJDNIV", L"2.0"},     {L"PLSCALE", L"1.0"},      {L"LTSCALE", L"1.0"},
    {L"STAMPVAL", L"1"},        {L"PLANZ", L"NEJ"},        {L"PLANDJUP", L"NEJ"},
    {L"PLANLAGER", L"NEJ"},     {L"PROFNAME", L"NEJ"},     {L"DSKALA", L"1.5"},
    {L"TXTVIDD", L"1.0"},       {L"DECIMAL", L"2"},        {L"FONT", L"TEXT"},
    {L"LINJEBREDD", L"NEJ"},    {L"SEKTDIST", L"5.0"},     {L"SEKTFIXDIST", L"0.0"},
    {L"KODTYP", L"SGF"},        {L"VIMFILTER", L"3"},      {L"LABTEXT", L"0"},
    {L"MTRLKOD", L"STANDARD"},  {L"HFAVRID", L"10"},       {L"IDSORT", L"1"},
    {L"PLSYMBFAC", L"1.0"},     {L"FILTER", L"1"},         {L"SEKTSTOLPE", L"0"},
    {L"TOTALSEKT", L"ORG"},     {L"CPTSEKT", L"ORG"},      {L"DREIESEKT", L"ORG"},
    {L"DREIESKALA", L"300"},    {L"DTRYKKSKALA", L"30"},   {L"FJELLSKALA", L"300"},
    {L"PORESKALA", L"-1"},      {L"P1SKALA", L"50"},       {L"P2SKALA", L"50"},
    {L"ENKELSKALA", L"200"},    {L"VBSKALA", L"-1"},       {L"DREIETEGNING", L"1.0"},
    {L"DTRYKKTEGNING", L"5.0"}, {L"FJELLTEGNING", L"1.0"}, {L"PORETEGNING", L"1.0"},
    {L"P1TEGNING", L"1.0"},     {L"P2TEGNING", L"1.0"},    {L"ENKELTEGNING", L"1.0"},
    {L"CPTTEGNING", L"1.0"},    {L"VBTEGNING", L"1.0"},    {L"TOTROTASJON", L"35"},
    {L"TOTSPYLE", L"100"},      {L"ARSPYLE", L"1"},        {L"QTSKALA", L"10"},
    {L"QTSTEG", L"2"},          {L"FTSKALA", L"0.10"},     {L"FTSTEG", L"0.02"},
    {L"USKALA", L"0.8"},        {L"USTEG", L"0.2"},        {L"U0", L"0.1"},
};

constexpr DefaultSetting kJb23[] = {
    {L"SJUNKSKALA", L"100"}, {L"SJUNKSTEG", L"50"},   {L"HASTSKALA", L"40"},  {L"HASTSTEG", L"10"},
    {L"KRAFTSKALA", L"30"},  {L"KRAFTSTEG", L"10"},   {L"RPMSKALA", L"100"},  {L"RPMSTEG", L"25"},
    {L"SPOLSKALA", L"2"},    {L"SPOLSTEG", L"0.5"},   {L"FLODESKALA", L"50"}, {L"FLODESTEG", L"25"},
    {L"HAMMARSKALA", L"10"}, {L"HAMMARSTEG", L"2.5"}, {L"TRYCKSKALA", L"10"}, {L"TRYCKSTEG", L"2.5"},
    {L"QTSKALA", L"14"},     {L"QTSTEG", L"2"},       {L"FTSKALA", L"100"},   {L"FTSTEG", L"50"},
    {L"USKALA", L"600"},     {L"USTEG", L"200"},
};

constexpr DefaultSetting kKarsk[] = {
    {L"IDHOJD", L"3.5"},     {L"METHOJD", L"2.5"},   {L"PROVHOJD", L"1.8"},    {L"SKALHOJD", L"2.5"},
    {L"PLHOJDID", L"3.0"},   {L"PLHOJDNIV", L"2.0"}, {L"PLSCALE", L"1.0"},     {L"HSKALA", L"100"},
    {L"LSKALA", L"100"},     {L"DSKALA", L"1.5"},    {L"BREDDLSP", L"1.0"},    {L"TXTVIDD", L"1.0"},
    {L"DECIMAL", L"2"},      {L"FONT", L"TEXT"},     {L"LINJEBREDD", L"FÄRG"}, {L"JBMAX", L"100"},
    {L"VFMAX", L"40"},       {L"VFSTEG", L"10"},     {L"RBMAX", L"100"},       {L"RBSTEG", L"50"},
    {L"RBHMAX", L"40"},      {L"RBHSTEG", L"10"},    {L"RBKMAX", L"15"},       {L"RBKSTEG", L"5"},
    {L"RBVMAX", L"100"},     {L"RBVSTEG", L"25"},    {L"RBSMAX", L"2"},        {L"RBSSTEG", L"0.5"},
    {L"RBFMAX", L"50"},      {L"RBFSTEG", L"25"},    {L"RBMMAX", L"10"},       {L"RBMSTEG", L"2.5"},
    {L"RBVMMAX", L"15"},     {L"RBVMSTEG", L"5"},    {L"SEISL0", L"4500"},     {L"SEISL1", L"3500"},
    {L"PROJICERAD", L"NEJ"}, {L"KBNAMN1", L""},      {L"KBNAMN2", L""},        {L"KBNAMN3", L""},
    {L"KBNAMN4", L""},       {L"KBMAX1", L"0.0"},    {L"KBSTEG1", L"0.0"},     {L"KBMAX2", L"0.0"},
    {L"KBSTEG2", L"0.0"},    {L"KBMAX3", L"0.0"},    {L"KBSTEG3", L"0.0"},     {L"KBMAX4", L"0.0"},
    {L"KBSTEG4", L"0.0"},    {L"JB23NAMN1", L""},    {L"JB23NAMN2", L""},      {L"TUNPXYTOL", L"1.0"},
};

}  // namespace

std::span<const DefaultSetting> TundrilDefaults() { return kTundril; }
std::span<const DefaultSetting> Jb23Defaults() { return kJb23; }
std::span<const DefaultSetting> KarskDefaults() { return kKarsk; }

const wchar_t* DefaultValue(std::span<const DefaultSetting> settings, std::wstring_view key) {
  for (const DefaultSetting& setting : settings)
    if (EqualNoCase(setting.key, key)) return setting.value;
  return L"";
}

}  // namespace velmora
