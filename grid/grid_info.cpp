#include "grid/grid_info.h"

namespace {

std::string Text(const char* s) { return s ? std::string(s) : std::string(); }

}  // namespace

void CVelTableInfoImpl::InitTableInfo(const CVelTableInfo& info, std::int32_t cfgSource) {
  tableID = info.tableID;
  secondID = info.secondID;
  parentTableID = info.parentTableID;
  alias = Text(info.alias);
  tableName = Text(info.tableName);
  keyField = Text(info.keyField);
  linkField = Text(info.linkField);
  condition = Text(info.condition);
  joinDirection = info.joinDirection;
  source = info.source != 0 ? info.source : cfgSource;
  extraJoin = Text(info.extraJoin);
}

void CVelColInfoCustImpl::InitColumnInfo(const CVelColInfo& info, std::int32_t cfgSource, bool ignoreForcePresent) {
  forcePresent = ignoreForcePresent ? 1u : info.forcePresent;
  fieldType = info.fieldType;
  allowShow = info.allowShow;
  align = info.align;
  allowSort = info.allowSort;
  allowFilter = info.allowFilter;
  kind = info.kind;
  dbFieldName = Text(info.dbFieldName);
  defCaption = Text(info.defCaption);
  orderByAsc = Text(info.orderByAsc);
  orderByDesc = Text(info.orderByDesc);
  isExpression = info.isExpression;
  resultName = Text(info.resultName);
  width = info.width;
  listText = Text(info.listText);
  if ((kind == varion::kColKindList || kind == varion::kColKindFlagList) && !listText.empty() &&
      listText.back() != '\n')
    listText += '\n';
  format = Text(info.format);
  minWidth = info.minWidth;
  decimals = info.decimals;
  calcType = info.calcType;
  headerAlign = info.headerAlign;
  multiLine = info.multiLine;
  visible = info.visible;
  caption = Text(info.caption);
  toolTip = Text(info.toolTip);
  summaryFormat = Text(info.summaryFormat);
  filterField = Text(info.filterField);
  textColor = info.textColor;
  backColor = info.backColor;
  bold = info.bold;
  italic = info.italic;
  readOnly = info.readOnly;
  hyperlink = info.hyperlink;
  description = Text(info.description);
  tableID = info.tableID;
  columnID = info.columnID;
  source = info.source != 0 ? info.source : cfgSource;
  helpID = info.helpID;
  licenceModule = info.licenceModule;
}

void CVelListInfoCustImpl::InitListInfo(const CVelListInfo& info) {
  listID = info.listID;
  defSortColumnID = info.defSortColumnID;
  defAscending = info.defAscending;
  title = Text(info.title);
  allowMultiSel = info.allowMultiSel;
  multiSel = info.multiSel;
  allowSelectedSum = info.allowSelectedSum;
  selectedSum = info.selectedSum;
  wrapText = info.wrapText;
  horLines = info.horLines;
  verLines = info.verLines;
  rowHeaderVisible = info.rowHeaderVisible;
  rowHeight = info.rowHeight;
  colHeaderHeight = info.colHeaderHeight;
  rowHeaderWidth = info.rowHeaderWidth;
  keyField = Text(info.keyField);
  zoom = info.zoom;
  frozenColCount = info.frozenColCount;
  where = Text(info.where);
  strikeOutField = Text(info.strikeOutField);
  strikeOutActive = info.strikeOutActive;
  helpKey = Text(info.helpKey);
  printTitle = Text(info.printTitle);
  shadowMode = info.shadowMode;
  autoStretch = info.autoStretch;
  sortColumnID = info.sortColumnID;
  ascending = info.ascending;
  allowCustomColumns = info.allowCustomColumns;
}
