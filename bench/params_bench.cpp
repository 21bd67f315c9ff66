// The two things a report does with its parameters every time it runs or its page is refreshed:
// the WHERE text of the whole list and the HTML page, for 50 parameters of mixed types.
#include <benchmark/benchmark.h>

#include "params/params_html_ctrl.h"

namespace {

using varion::Amount;
using varion::DateTime;

// Ten kinds of parameter, each five times: text, amount range, date, whole-day range, hour,
// single text, identifier list with NULL for 0, one identifier, checklist, and an empty one.
void Fill(CParamsHtmlCtrl& view) {
  using namespace ZestParams;
  for (int round = 0; round < 5; ++round) {
    const std::string n = std::to_string(round);
    CArrZestParams& p = view.GetParams();
    p.Add(ZestParamsString().SetDbField("kh_Nazwa" + n).SetLabel("Nazwa").SetValue("Młyn O'Brien").SetValue2(0x100)
              .SetValueStr("Młyn O'Brien").SetEmpty(false));
    p.Add(ZestParamsCurrency().SetDbField("dok_Wartosc" + n).SetLabel("Kwota").SetValue(Amount::FromUnits(10, 5000))
              .SetValue2(Amount::FromUnits(2500)).SetValue3(0x1000).SetValuePrefix("od").SetValueStr("10,50 do 2500,00")
              .SetEmpty(false));
    p.Add(ZestParamsDate().SetDbField("dok_DataWyst" + n).SetLabel("Data").SetValue(DateTime(2024, 5, 31))
              .SetValue3(0x4).SetDisplayValue("do 2024-05-31").SetEmpty(false));
    p.Add(ZestParamsDate().SetType(ZestParamsTypeDateTime).SetDbField("log_Data" + n).SetLabel("Okres")
              .SetValue(DateTime(2024, 5, 1)).SetValue2(DateTime(2024, 5, 31)).SetValue3(0x31000)
              .SetDisplayValue("bieżący miesiąc").SetEmpty(false));
    p.Add(ZestParamsDateHour().SetDbField("log_Data" + n).SetLabel("Godziny").SetValue(DateTime(2024, 1, 1, 8, 0))
              .SetValue2(DateTime(2024, 1, 1, 16, 30)).SetValue3(varion::Variant::MakeNull()).SetValueStr("8:00 - 16:30")
              .SetEmpty(false));
    p.Add(ZestParamsSelection().SetDbField("dok_Status" + n).SetLabel("Stan").SetValue("Zatwierdzony")
              .SetValueStr("Zatwierdzony").SetEmpty(false));
    p.Add(ZestParamsSelectionDbObject().SetDbField("dok_MagId" + n).SetLabel("Magazyn").SetValue("0, 12, 17, 23")
              .SetParam(0x10).SetValueStr("4 magazyny").SetEmpty(false));
    p.Add(ZestParamsInstynkt().SetDbField("dok_OdbiorcaId" + n).SetLabel("Odbiorca").SetValue(std::int32_t{1042})
              .SetValueStr("Zielarnia \"Pod Świerkiem\"").SetEmpty(false));
    p.Add(ZestParamsChecklist().SetDbField("dok_Typ" + n).SetLabel("Typy").SetValue("1, 2, 5").SetStandard(false)
              .SetValueStr("Faktura, Paragon, Korekta").SetEmpty(false));
    p.Add(ZestParamsLookup().SetDbField("dok_PlatnikId" + n).SetLabel("Płatnik"));
  }
}

void BM_GetWhereString(benchmark::State& state) {
  CParamsHtmlCtrl view;
  Fill(view);
  for (auto _ : state) benchmark::DoNotOptimize(view.GetWhereString());
}
BENCHMARK(BM_GetWhereString)->Unit(benchmark::kMicrosecond);

void BM_GenerateContentsHtml(benchmark::State& state) {
  CParamsHtmlCtrl view;
  Fill(view);
  std::string html;
  for (auto _ : state) {
    view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
    benchmark::DoNotOptimize(html.data());
  }
}
BENCHMARK(BM_GenerateContentsHtml)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
