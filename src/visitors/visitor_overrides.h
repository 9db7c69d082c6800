#pragma once
// Turns the columns of stored_classes.def into the overrides of the concrete visitors. The plain
// visitor of a format says something about every slot; the two derived ones only add what is theirs.
//
//   column     plain visitor    creator visitor   timestep visitor
//   all        its own form     -                 -
//   creator    empty body       its own form      -
//   timestep   empty body       -                 its own form
//   both       empty body       its own form      its own form
//   nothing    empty body       -                 -

// clang-format off
#define BRENMARK_PLAIN_all(declaration) declaration;
#define BRENMARK_PLAIN_creator(declaration) declaration {}
#define BRENMARK_PLAIN_timestep(declaration) declaration {}
#define BRENMARK_PLAIN_both(declaration) declaration {}
#define BRENMARK_PLAIN_nothing(declaration) declaration {}

#define BRENMARK_CREATOR_all(declaration)
#define BRENMARK_CREATOR_creator(declaration) declaration;
#define BRENMARK_CREATOR_timestep(declaration)
#define BRENMARK_CREATOR_both(declaration) declaration;
#define BRENMARK_CREATOR_nothing(declaration)

#define BRENMARK_TIMESTEP_all(declaration)
#define BRENMARK_TIMESTEP_creator(declaration)
#define BRENMARK_TIMESTEP_timestep(declaration) declaration;
#define BRENMARK_TIMESTEP_both(declaration) declaration;
#define BRENMARK_TIMESTEP_nothing(declaration)
// clang-format on
