-- Selects one of two buses, whatever their bits mean: aa where condition is 1, else bb.
--   step choose:  one of both
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_select is
  generic (width : positive);
  port (sysclk, reset, enable, condition : in std_logic;
        aa : in std_logic_vector(width downto 1);
        bb : in std_logic_vector(width downto 1);
        cc : out std_logic_vector(width downto 1));
end xfc_select;

architecture rtl of xfc_select is
  signal chosen_d : std_logic_vector(width downto 1);
begin
  -- choose
  chosen_d <= aa when condition = '1' else bb;

  choose_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, chosen_d, cc);
end rtl;
