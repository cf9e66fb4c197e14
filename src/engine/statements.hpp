// The statements the engine runs itself: the block statements and the other control flow
// (control_flow.cpp), and `set`, `debug`, `errorshow` (engine_statements.cpp). The statement
// table of the script bindings names them beside the domains' own.
#pragma once

namespace quiller {

class Engine;

namespace statements {
void call(Engine&);
void else_(Engine&);
void end(Engine&);
void endsub(Engine&);
void endwhile(Engine&);
void goto_(Engine&);
void if_(Engine&);
void ifnot(Engine&);
void load(Engine&);
void nothing(Engine&);  // endif, label, repeat, sub: what they do is found by the line finder
void until(Engine&);
void while_(Engine&);

void debug(Engine&);
void errorshow(Engine&);
void set(Engine&);
}  // namespace statements

}  // namespace quiller
