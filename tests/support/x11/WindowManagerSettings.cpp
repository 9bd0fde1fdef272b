#include "tests/support/x11/WindowManagerSettings.h"

#include "tests/support/base/TextFile.h"

#include <string_view>

namespace orbel::test {

namespace {

// Key bindings would take combinations that tests want to be free; leaving the section out brings in the
// default ones. Focusing and raising on a click exist only as bindings.
constexpr std::string_view kOpenboxConfiguration = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><focusLast>yes</focusLast></focus>
  <placement><policy>Smart</policy><center>no</center></placement>
  <theme><name>Clearlooks</name><titleLayout>NLIMC</titleLayout><animateIconify>no</animateIconify></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <keyboard/>
  <mouse>
    <doubleClickTime>400</doubleClickTime>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Middle" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Right" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="Close">
      <mousebind button="Left" action="Click"><action name="Close"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";

constexpr std::string_view kXfwm4Configuration = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="click_to_focus" type="bool" value="true"/>
    <property name="focus_new" type="bool" value="true"/>
    <property name="raise_on_click" type="bool" value="true"/>
    <property name="workspace_count" type="int" value="1"/>
    <property name="wrap_windows" type="bool" value="false"/>
    <property name="snap_to_border" type="bool" value="false"/>
    <property name="snap_to_windows" type="bool" value="false"/>
    <property name="tile_on_move" type="bool" value="false"/>
    <property name="show_frame_shadow" type="bool" value="false"/>
    <property name="show_popup_shadow" type="bool" value="false"/>
  </property>
</channel>
)";

// An own channel hides the machine-wide defaults, which bind Ctrl+Alt and Alt+Space combinations.
constexpr std::string_view kXfceShortcuts = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="xfwm4" type="empty">
    <property name="custom" type="empty"><property name="override" type="bool" value="true"/></property>
  </property>
  <property name="providers" type="array"><value type="string" value="xfwm4"/></property>
</channel>
)";

// Rendering in software counts as unsafe to KWin unless its configuration says otherwise.
constexpr std::string_view kKWinConfiguration = R"([Compositing]
Enabled=true
Backend=OpenGL
OpenGLIsUnsafe=false
WindowsBlockCompositing=false

[Plugins]
blurEnabled=true
slidingpopupsEnabled=false
kwin4_effect_fadingpopupsEnabled=false
kwin4_effect_fadeEnabled=false
kwin4_effect_scaleEnabled=false

[Windows]
FocusPolicy=ClickToFocus
ElectricBorders=0
BorderSnapZone=0
WindowSnapZone=0

[Effect-windowview]
BorderActivateAll=9

[ModifierOnlyShortcuts]
Meta=
)";

constexpr std::string_view kKdeConfiguration = "[KDE]\nAnimationDurationFactor=0\n";

constexpr std::string_view kPicomConfiguration = "backend = \"xrender\";\nshadow = false;\nfading = false;\n"
                                                 "vsync = false;\nuse-damage = true;\n";

} // namespace

void writeWindowManagerSettings(const std::filesystem::path& configurationFolder) {
  const std::filesystem::path xfce = configurationFolder / "xfce4/xfconf/xfce-perchannel-xml";
  writeFile(configurationFolder / "openbox/rc.xml", kOpenboxConfiguration);
  writeFile(configurationFolder / "picom.conf", kPicomConfiguration);
  writeFile(configurationFolder / "kwinrc", kKWinConfiguration);
  writeFile(configurationFolder / "kdeglobals", kKdeConfiguration);
  writeFile(xfce / "xfwm4.xml", kXfwm4Configuration);
  writeFile(xfce / "xfce4-keyboard-shortcuts.xml", kXfceShortcuts);
}

} // namespace orbel::test
