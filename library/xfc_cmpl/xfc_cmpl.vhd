-- Compares two integers of 32 bits: equal, not equal, less, less or equal, greater, greater or equal for relation 0
-- to 5. Exact.
--   step relate:  one carry chain; the relation from less and equal
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_cmpl is
  generic (relation : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic);
end xfc_cmpl;

architecture rtl of xfc_cmpl is
  -- relate
  signal equal, less : std_logic;
  signal holds_d, holds : std_logic_vector(0 downto 0);
begin
  assert relation <= 5 report "xfc_cmpl: relation is 0 to 5" severity failure;

  -- relate
  equal <= '1' when aa = bb else '0';
  less <= '1' when signed(aa) < signed(bb) else '0';
  relate_holds : entity work.xfc_relation generic map (relation) port map ('0', equal, less, holds_d(0));

  relate_0 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, holds_d, holds);
  cc <= holds(0);
end rtl;
