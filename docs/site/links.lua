-- Links to Markdown lead to its HTML, those to headers and classes into the references. What the site lacks is text.

local places = {
  {'^(.*)effects/.*/(%w+)%.h$', '%1reference/cpp/class%2.html'},
  {'^(.*)looks/(%w+)%.h$', '%1reference/cpp/classtidalume_1_1%2.html'},
  {'^(.*)java/(com/.*)%.java$', '%1reference/java/%2.html'},
  {'^(.*)%.md$', '%1.html'},
  {'^(.*)%.md(#.*)$', '%1.html%2'},
}

function Link(link)
  if link.target:match('^#') or link.target:match('^%a+:') then return link end
  for _, place in ipairs(places) do
    local target, count = link.target:gsub(place[1], place[2])
    if count > 0 then
      link.target = target
      return link
    end
  end
  return link.content
end
