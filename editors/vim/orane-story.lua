-- Neovim (0.7 and later): starts `orane-story lsp` for story files, one server per stories
-- directory. Put editors/vim on the runtime path for file detection and colours, then load
-- this file from init.lua:
--   vim.opt.runtimepath:append('/path/to/orane/editors/vim')
--   dofile('/path/to/orane/editors/vim/orane-story.lua')
-- vim.g.orane_story_command names the program when it is not on the PATH.
local servers = {}

vim.api.nvim_create_autocmd('FileType', {
  pattern = 'orane',
  callback = function(args)
    local root = vim.fn.fnamemodify(vim.api.nvim_buf_get_name(args.buf), ':p:h')
    if not servers[root] then
      servers[root] = vim.lsp.start_client({
        name = 'orane-story',
        cmd = { vim.g.orane_story_command or 'orane-story', 'lsp' },
        root_dir = root,
        workspace_folders = { { uri = vim.uri_from_fname(root), name = root } },
        on_exit = function() servers[root] = nil end,
      })
    end
    if servers[root] then
      vim.lsp.buf_attach_client(args.buf, servers[root])
    end
  end,
})
