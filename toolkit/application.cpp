#include "toolkit/application.h"

namespace toolkit {

Application::~Application() = default;

} // namespace toolkit
