-- Neovim, headless, as an author's editor with the repository's config lines: opens a copy of
-- our story, plants a broken link and sees its diagnostic arrive and leave, jumps to a scene,
-- completes a scene name and renames a scene. Exits non-zero at the first thing that fails.
-- Environment: ORANE_SOURCE_DIR (the repository), ORANE_STORY_COMMAND (the built orane-story).
local source = os.getenv('ORANE_SOURCE_DIR')
local function fail(message)
  io.stderr:write('FAILED: ' .. message .. '\n')
  vim.cmd('cquit 1')
end

local function copyStory()
  local directory = vim.fn.tempname()
  vim.fn.mkdir(directory, 'p')
  for _, path in ipairs(vim.fn.glob(source .. '/resources/stories/*', false, true)) do
    vim.fn.writefile(vim.fn.readfile(path, 'b'), directory .. '/' .. vim.fn.fnamemodify(path, ':t'), 'b')
  end
  return directory
end

local function waitFor(what, condition)
  if not vim.wait(20000, condition, 20) then
    fail('timed out waiting for ' .. what)
  end
end

local function errors()
  return vim.diagnostic.get(0, { severity = vim.diagnostic.severity.ERROR })
end

local ok, problem = pcall(function()
  vim.opt.runtimepath:prepend(source .. '/editors/vim')
  vim.g.orane_story_command = os.getenv('ORANE_STORY_COMMAND')
  dofile(source .. '/editors/vim/orane-story.lua')
  vim.cmd('filetype on')
  vim.cmd('syntax on')

  local story = copyStory()
  vim.cmd('edit ' .. story .. '/story.txt')
  if vim.bo.filetype ~= 'orane' then fail('story.txt was detected as "' .. vim.bo.filetype .. '"') end
  waitFor('the server to attach', function() return #vim.lsp.buf_get_clients(0) > 0 end)

  -- A link that names no scene: the game's own message, on the link's line.
  local lines = vim.api.nvim_buf_get_lines(0, 0, -1, false)
  local link = vim.fn.index(lines, '-> intro_meurtres')
  vim.api.nvim_buf_set_lines(0, link, link + 1, false, { '-> intro_meurtre' })
  waitFor('the planted fault', function()
    local found = errors()
    return #found == 1 and found[1].lnum == link
      and found[1].message:find('points to non-existing scene "intro_meurtre"', 1, true) ~= nil
  end)
  vim.api.nvim_buf_set_lines(0, link, link + 1, false, { '-> intro_meurtres' })
  -- Only the planted fault must go: the prose checks may have their say on the rest.
  waitFor('the fault to leave', function()
    for _, diagnostic in ipairs(vim.diagnostic.get(0)) do
      if diagnostic.lnum == link or diagnostic.message:find('intro_meurtre"', 1, true) then return false end
    end
    return #errors() == 0
  end)

  -- Definition: from a FORWARD line to the SCENE line.
  local forward = vim.fn.index(lines, 'FORWARD intro_meurtres')
  local scene = vim.fn.index(lines, 'SCENE intro_meurtres')
  vim.api.nvim_win_set_cursor(0, { forward + 1, 10 })
  vim.lsp.buf.definition()
  waitFor('the jump to the scene', function() return vim.api.nvim_win_get_cursor(0)[1] == scene + 1 end)

  -- Completion of a scene name being typed after "->".
  vim.api.nvim_buf_set_lines(0, link, link + 1, false, { '-> intro_me' })
  local answers = vim.lsp.buf_request_sync(0, 'textDocument/completion', {
    textDocument = vim.lsp.util.make_text_document_params(0),
    position = { line = link, character = 11 },
  }, 10000)
  local offered = {}
  for _, answer in pairs(answers or {}) do
    for _, item in ipairs(answer.result or {}) do offered[item.label] = true end
  end
  if not offered['intro_meurtres'] then fail('intro_meurtres was not offered') end
  vim.api.nvim_buf_set_lines(0, link, link + 1, false, { '-> intro_meurtres' })

  -- Rename: the SCENE line and every link, in one edit; the story stays sound.
  local published = 0
  vim.api.nvim_create_autocmd('DiagnosticChanged', { callback = function() published = published + 1 end })
  vim.api.nvim_win_set_cursor(0, { scene + 1, 8 })
  vim.lsp.buf.rename('intro_les_meurtres')
  waitFor('the rename', function()
    local now = vim.api.nvim_buf_get_lines(0, 0, -1, false)
    return now[scene + 1] == 'SCENE intro_les_meurtres' and now[link + 1] == '-> intro_les_meurtres'
      and now[forward + 1] == 'FORWARD intro_les_meurtres'
  end)
  local left = vim.api.nvim_buf_get_lines(0, 0, -1, false)
  for _, line in ipairs(left) do
    if line:find('intro_meurtres', 1, true) then fail('a link was not renamed: ' .. line) end
  end
  waitFor('a sound story after the rename', function() return published > 0 and #errors() == 0 end)
  vim.fn.delete(story, 'rf')
end)

if not ok then fail(tostring(problem)) end
io.stdout:write('neovim end-to-end: diagnostics, definition, completion and rename work\n')
vim.cmd('qall!')
