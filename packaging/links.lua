-- Turns links between the documents of docs into those between the pages that are installed, each in
-- the folder of its package. What is not installed loses its link.
local packages = { manual = "ras-log-browser", raslog = "raslog", format = "raslog" }

function Link(link)
  local name, place = link.target:match("^(%w+)%.md(#?.*)$")
  if packages[name] then
    link.target = "../" .. packages[name] .. "/" .. name .. ".html" .. place
  elseif not link.target:match("^#") and not link.target:match("^https?:") then
    return link.content
  end
  return link
end
