#pragma once

namespace ekinora::profile {

// "profileVC" and "dealerVC", the side menu's "Profilim" and "Bayi Bilgileri".
void registerScreens();

} // namespace ekinora::profile
