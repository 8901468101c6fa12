-- Passes a bus on after `delay` cycles, whatever its bits mean. Exact.
-- A chain of registers without reset is what tools turn into shift-register tables, so `synthesize` changes nothing.
-- Latency: delay cycles.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_delay is
  generic (width : positive; delay : positive; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(width downto 1);
        cc : out std_logic_vector(width downto 1));
end xfc_delay;

architecture rtl of xfc_delay is
  -- What entered `cycle` cycles ago.
  type history is array (0 to delay) of std_logic_vector(width downto 1);
  signal line : history;
begin
  assert synthesize <= 1 report "xfc_delay: synthesize is 0 or 1" severity failure;

  line(0) <= aa;
  steps : for cycle in 1 to delay generate
    step : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, line(cycle - 1), line(cycle));
  end generate;
  cc <= line(delay);
end rtl;
