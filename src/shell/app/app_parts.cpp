#include "shell/app/app_parts.h"

#include "shell/app/app.h"
#include "shell/commands/command_groups.h"

namespace ferrowand {

AppParts::AppParts(HINSTANCE instance, const Seams& seams)
    : reporter(seams.sink),
      progress(instance),
      data(reporter, progress),
      choice(options),
      direct3d(seams.direct3dLibrary, options, reporter),
      classes(instance),
      objects(options),
      popups(instance),
      commands(
          {data, options, progress, boundEntities, windows, sides, tools, frame, seams.dialogs}),
      frame(instance, options, reporter, progress, commands, documents),
      windows(frame, documents, reporter, options),
      toolHost({windows, tools, commands, reporter, seams.dialogs, popups, objects, choice}),
      tools(toolHost, windows.Views(), options),
      joystick(seams.joysticks, options, reporter),
      maker(windows, sides, {options, reporter, commands, tools, toolHost, objects, backBuffer},
            {reporter, seams.dialogs, popups, commands},
            {options, reporter, seams.dialogs, popups, tools, joystick, direct3d}, seams.dialogs,
            {options, reporter, seams.dialogs, popups, commands},
            {options, seams.dialogs, popups, commands, choice, wadEditing, sides}),
      documents(data, options, seams.dialogs, maker, seams.dataFolder),
      wadEditing(data, seams.dialogs, documents),
      accelerators(instance, commands, frame),
      tips(options, objects) {
  AddCommands(seams);
}

void AppParts::AddCommands(const Seams& seams) {
  Dialogs& dialogs = seams.dialogs;
  commands.Add(MakeFileCommands({documents, windows, frame, dialogs, reporter, options}));
  commands.Add(MakeOptionsCommands({data, options, boundEntities, seams.joysticks, joystick,
                                    documents, windows, frame, dialogs, seams.directory}));
  commands.Add(
      MakeEditCommands({windows, tools, frame, dialogs, seams.clipboard, reporter, options}));
  commands.Add(MakeModeCommands({tools, windows, frame, commands, dialogs, reporter, options}));
  commands.Add(MakeOperateCommands({windows, tools, dialogs, reporter, choice, options}));
  commands.Add(MakeInsertCommands({windows, maker, commands, dialogs, reporter, options}));
  commands.Add(
      MakeClassCommands({documents, windows, sides, frame, dialogs, boundEntities, reporter}));
  commands.Add(
      MakeEntityCommands({windows, sides, tools, frame, dialogs, commands, reporter, options}));
  commands.Add(MakeTemplateCommands({documents, windows, dialogs, reporter}));
  commands.Add(MakeCompileCommands({data, documents, windows, sides, maker, frame, dialogs,
                                    seams.clipboard, reporter, options, seams.dataFolder}));
  commands.Add(MakeViewCommands({documents, windows, commands, popups, reporter, options}));
  commands.Add(MakeWindowCommands({windows, maker, frame, commands, popups, options}));
  commands.Add(MakeFindCommands({windows, sides, maker, options}));
  commands.Add(MakeTextureCommands({windows, sides, maker, commands, choice, documents, data, frame,
                                    dialogs, reporter, options}));
  commands.Add(MakeFaceCommands({windows, sides, tools, options}));
  commands.Add(MakeCameraCommands({windows, maker, tools, direct3d, progress, reporter, options}));
}

}  // namespace ferrowand
