// Command words of the evaluation.
#include "frontend/eval_commands.h"

#include <cstdio>

#include "eval/evaluate.h"
#include "position/board.h"
#include "position/output.h"

int run_boardscore(Session *, const char *, char *)
{
    const std::int32_t score = evaluate(current_board, current_board.white_to_move, 1);
    out_printf("boardscore: %d\n", int(score));
    return 0;
}
