// Columns the user adds to a list: a field of one of the list's tables, or an SQL expression.
// They follow the program's columns in the configuration's column order, take part in the
// statement like any other column, and are stored in the column blob under the identifier 9999.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/export.h"
#include "grid/grid_info.h"

class VARION_API ICustomColumnsCfg {
 public:
  virtual ~ICustomColumnsCfg() = default;
  virtual int GetCount() const = 0;
  // nullptr for an index outside 0..count-1.
  virtual const CVelColInfoCustImpl* GetColumn(int index) const = 0;
  virtual CVelColInfoCustImpl* GetColumn(int index) = 0;
  // Returns the new column's index, or -1 when the record cannot make a column (no field text,
  // or an expression without a result name to sort it by).
  virtual int AddColumn(const CVelColInfoCustImpl& column) = 0;
  virtual bool RemoveColumn(int index) = 0;
  virtual void RemoveAll() = 0;
  virtual std::unique_ptr<ICustomColumnsCfg> Clone() const = 0;
};

class VARION_API CCustomColumnsCfgImpl final : public ICustomColumnsCfg {
 public:
  int GetCount() const override { return static_cast<int>(m_columns.size()); }
  const CVelColInfoCustImpl* GetColumn(int index) const override;
  CVelColInfoCustImpl* GetColumn(int index) override;
  int AddColumn(const CVelColInfoCustImpl& column) override;
  bool RemoveColumn(int index) override;
  void RemoveAll() override { m_columns.clear(); }
  std::unique_ptr<ICustomColumnsCfg> Clone() const override;

  // A visible field column of the table with the given identifier.
  int AddField(const std::string& caption, std::int32_t tableID, const std::string& field,
               VelFieldType type = VelFieldType::Text);
  // A visible expression column: the statement gets "(expression) AS resultName".
  int AddExpression(const std::string& caption, const std::string& expression, const std::string& resultName,
                    VelFieldType type = VelFieldType::Text);

 private:
  std::vector<CVelColInfoCustImpl> m_columns;
};
