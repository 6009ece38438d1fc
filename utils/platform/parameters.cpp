#include "utils/platform/platform.h"

#include "utils/internal/text_view.h"

using kv::internal::ViewOf;

IntParametersSender::IntParametersSender() = default;
IntParametersSender::IntParametersSender(const IntParametersSender& other) = default;
IntParametersSender& IntParametersSender::operator=(const IntParametersSender& other) = default;
IntParametersSender::~IntParametersSender() = default;

void IntParametersSender::SetParamByName(int value, const char* name) {
  m_Parameters.insert_or_assign(std::string(ViewOf(name)), value);
}

bool IntParametersSender::GetParamByName(int* value, const char* name) {
  const auto parameter = m_Parameters.find(ViewOf(name));
  if (parameter == m_Parameters.end() || value == nullptr) return false;
  *value = parameter->second;
  return true;
}

IntParametersSender& GetParametersSender() {
  static IntParametersSender sender;
  return sender;
}
