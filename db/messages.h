// Texts of the errors this layer raises itself (the server's own errors carry the server's text).
// They reach users through the message boxes, so they are Polish.
#pragma once

#include <string>
#include <string_view>

namespace varion::db::messages {

std::string NoField(std::string_view name);
std::string NoFieldIndex(int index);
std::string NotABlob(std::string_view name);
std::string NoCurrentRecord();
std::string BadRecordsetShape();
std::string ConnectionClosed();
std::string ConnectionLost();
std::string TransactionActive();
std::string NoTransaction();
std::string BadConnectionString(std::string_view reason);
std::string SqliteUnavailable();
std::string NotUpdatable(std::string_view sql);
std::string NoNewRecord();
std::string FieldTypeMismatch(std::string_view name);
std::string NoParameter(int index);
std::string StatementClosed();

}  // namespace varion::db::messages
