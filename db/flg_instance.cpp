#include "db/flg_interfaces.h"

#include "db/rt_instance.h"

namespace varion {
namespace {

class RuntimeInstance final : public IFlgInstance {
 public:
  db::Connection GetConnection() override { return CRtInstance::GetConnection(); }
  std::int32_t GetUserId() override { return CRtInstance::GetUserId(); }
  std::string GetUserIdentifier() override { return CRtInstance::GetUserIdentifier(); }
  std::string GetWorkstationName() override { return CRtInstance::GetWorkstationName(); }
};

}  // namespace

IFlgInstance* RunningFlgInstance() {
  static RuntimeInstance instance;
  return &instance;
}

}  // namespace varion
