-- An IEEE single with the sign of another one: exact, the sign bit alone changes, of zero, infinity and nan too.
--   step sign:  the new sign
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_copysignf is
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_copysignf;

architecture rtl of xfc_copysignf is
  constant width : positive := 32;
  signal signed_d : std_logic_vector(width downto 1);
begin
  -- sign
  signed_d <= bb(width) & aa(width - 1 downto 1);

  sign_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, signed_d, cc);
end rtl;
